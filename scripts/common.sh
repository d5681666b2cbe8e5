# Sourced by the other scripts: installs what is missing and builds a preset.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# install_packages GROUP ...: installs what the machine lacks of these groups of scripts/packages.txt.
install_packages() {
    local wanted missing=() package
    mapfile -t wanted < <(sed 's/#.*//' scripts/packages.txt |
        awk -v groups=" $* " '/^\[/ { on = index(groups, " " substr($1, 2, length($1) - 2) " "); next } on && NF { print $1 }')
    for package in "${wanted[@]}"; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    echo "installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET ...]: with the tests where their libraries are installed.
build() {
    local preset=$1 targets=() tests=OFF
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    [ ! -d /usr/include/gtest ] || tests=ON
    cmake --preset "$preset" -DBUILD_TESTING=$tests >/dev/null
    cmake --build --preset "$preset" "${targets[@]}"
}
