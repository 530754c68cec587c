// A game and its core in one, which imports the framework as a module: asks for the version and a plugin, and registers an
// observer. Linked against the packaged framework by consumer_test.py; never run.

@import VornFacebook;
#import <VornFacebook/VornDefine.h>

bool LogOut();

namespace {

using Tarvik::Vorn::InnerLoginRet;
using Tarvik::Vorn::VornInnerObserverHolder;

int sFailedLogins = 0;

void LoginFailed(const InnerLoginRet& /*result*/, const char* /*seqID*/) {
    ++sFailedLogins;
}

} // namespace

int main() {
    VornInnerObserverHolder<InnerLoginRet>::mObserverHolder[Tarvik::Vorn::ObserverID::kLogin] = &LoginFailed;
    const bool ready = VornFacebookVersionString[0] == '@' && VornFacebookVersionNumber >= 1.0 &&
                       [VornLoginFacebook sharedInstance] != nil && LogOut();
    return ready ? sFailedLogins : 1;
}
