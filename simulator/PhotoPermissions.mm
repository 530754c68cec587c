#include "PhotoPermissions.h"

namespace Tarvik::Vorn::Simulator {

PHAuthorizationStatus StatusOf(PhotoPermission permission) {
    switch (permission) {
    case PhotoPermission::kNotAsked:
        return PHAuthorizationStatusNotDetermined;
    case PhotoPermission::kRestricted:
        return PHAuthorizationStatusRestricted;
    case PhotoPermission::kDenied:
        return PHAuthorizationStatusDenied;
    case PhotoPermission::kAuthorized:
        return PHAuthorizationStatusAuthorized;
    case PhotoPermission::kLimited:
        return PHAuthorizationStatusLimited;
    }
    __builtin_unreachable();
}

const char* NameOf(PhotoPermission permission) {
    switch (permission) {
    case PhotoPermission::kNotAsked:
        return "not asked for yet";
    case PhotoPermission::kRestricted:
        return "restricted";
    case PhotoPermission::kDenied:
        return "denied";
    case PhotoPermission::kAuthorized:
        return "authorized";
    case PhotoPermission::kLimited:
        return "limited";
    }
    __builtin_unreachable();
}

} // namespace Tarvik::Vorn::Simulator
