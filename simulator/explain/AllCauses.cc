#include "Cause.h"

namespace Tarvik::Vorn::Simulator::Explaining {

std::vector<const Cause*> AllCauses() {
    std::vector<const Cause*> all;
    for (const std::span<const Cause> table : {LoginCauses(), ShareDialogCauses(), ShareRefusalCauses(), MediaCauses(),
                                               MessageCauses(), InvitationCauses(), FriendCauses(), SilenceCauses()}) {
        for (const Cause& cause : table) {
            all.push_back(&cause);
        }
    }
    return all;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
