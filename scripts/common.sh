# Sourced by the other scripts: installs what is missing and builds a preset.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Installs the packages of scripts/packages.txt that the machine lacks.
install_packages() {
    local wanted missing=() package
    mapfile -t wanted < <(sed 's/#.*//' scripts/packages.txt | tr -s ' \t' '\n' | grep .)
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

# build PRESET [TARGET ...]
build() {
    local preset=$1 targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" "${targets[@]}"
}
