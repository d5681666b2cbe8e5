// The families of things.
#include "schematic/things.h"

bool tm_family_holds(tm_family family, tm_family member) {
    if (family != tm_family::all && family != tm_family::first) return family == member;
    return member != tm_family::pin && (member != tm_family::property || tm_vext.smash_on);
}
