#include "FacebookProfile.h"

#include <atomic>

namespace Tarvik::Vorn::Host {

namespace {

std::atomic<FacebookProfile> sProfile{FacebookProfile::k18_1};

} // namespace

void SetFacebookProfile(FacebookProfile profile) {
    sProfile.store(profile);
}

FacebookProfile CurrentFacebookProfile() {
    return sProfile.load();
}

} // namespace Tarvik::Vorn::Host
