#include "WorldCheck.h"

#include "VornCodes.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <type_traits>

namespace Tarvik::Vorn::Simulator {
namespace {

// What may be waiting for an answer by now.
enum class Opens { kLogin, kFriendFinder, kInvitation, kShare };

// Whether the sequence ID is the one of a repeated request in some round: it has a number where that one has "{n}".
bool IsOfSomeRound(std::string_view seqID, std::string_view repeated) {
    constexpr std::string_view kRound = "{n}";
    const size_t round = repeated.find(kRound);
    if (round == std::string_view::npos || !seqID.starts_with(repeated.substr(0, round))) {
        return false;
    }
    const size_t end = std::min(seqID.find_first_not_of("0123456789", round), seqID.size());
    std::string made(repeated);
    for (size_t at = made.find(kRound); at != std::string::npos; at = made.find(kRound)) {
        made.replace(at, kRound.size(), seqID.substr(round, end - round));
    }
    return end > round && made == seqID;
}

// Follows the steps as far as it can be told without playing them.
class Check {
public:
    Check(StepReader& reader, const World& world) : mReader(reader), mWorld(world) {
        for (const unsigned id : {ObserverID::kLogin, ObserverID::kLogout, ObserverID::kLoginPlugin,
                                  ObserverID::kQueryFriends, ObserverID::kDirect}) {
            mObservers.insert(id);
        }
    }

    void Run() {
        Steps(mWorld.setting);
        Steps(mWorld.steps);
        ExpectedObservers();
    }

private:
    // NOLINTNEXTLINE(misc-no-recursion): repeats stand in repeats, a few deep.
    void Steps(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            if (mReader.Failed()) {
                return;
            }
            mLocation = step.location;
            std::visit([this](const auto& action) { See(action); }, step.action);
        }
    }

    template <class T>
    void See(const T& action) {
        if constexpr (std::is_constructible_v<Answer, T>) {
            SeeAnswer(action.manner);
            SeeWhatIsAnswered(action);
        }
    }

    void See(const RepeatStep& step) { Steps(step.steps); } // NOLINT(misc-no-recursion)
    void See(const ObserveStep& step) { mObservers.insert(step.observerID); }
    void See(const LoginStep& step) { SeeRequest(step.params, Opens::kLogin); }
    void See(const LogoutStep& step) { mRequests.insert(step.params.seqID); }
    void See(const QueryFriendsStep& step) { mRequests.insert(step.params.seqID); }
    void See(const ShareStep& step) { SeeFriendRequest(step.request); }
    void See(const SendMessageStep& step) { SeeFriendRequest(step.request); }

    void See(const AddFriendStep& step) {
        mObservers.insert(step.observerID);
        SeeRequest(step.params, Opens::kFriendFinder);
    }

    void See(const CommitStep& step) {
        mObservers.insert(step.observerID);
        mRequests.insert(step.seqID);
    }

    void See(const RemoveObserverStep& step) {
        if (!mObservers.contains(step.observerID)) {
            mReader.FailAt(mLocation, "nobody has registered observer " + std::to_string(step.observerID),
                           "put an \"observe\" of it before this step, or remove the step");
        }
    }

    void SeeFriendRequest(const FriendRequest& request) {
        mObservers.insert(request.observerID);
        SeeRequest(request.params, request.info.type == RequestType::kInvite ? Opens::kInvitation : Opens::kShare);
    }

    void SeeRequest(const VornBaseParams& params, Opens opens) {
        mRequests.insert(params.seqID);
        mOpens.insert(opens);
    }

    // A request that is answered by its sequence ID must have been made.
    void SeeAnswer(const AnswerManner& manner) {
        if (manner.inside) {
            mReader.FailAt(mLocation, "a step cannot answer inside the call, which is over",
                           "write the answer among the request's \"answers\", or remove \"inside\"");
        }
        const bool isOfARound = manner.of && manner.of->find("{n}") != std::string::npos;
        if (manner.of && !isOfARound && !HasBeenMade(*manner.of)) {
            std::vector<std::string_view> known(mRequests.begin(), mRequests.end());
            mReader.FailAt(mLocation, "no request \"" + *manner.of + "\" has been made before this answer",
                           known.empty() ? "put the request before it" : MeantOrOneOf(*manner.of, known));
        }
    }

    bool HasBeenMade(const std::string& seqID) const {
        return mRequests.contains(seqID) || std::any_of(mRequests.begin(), mRequests.end(), [&](const auto& request) {
                   return IsOfSomeRound(seqID, request);
               });
    }

    void Require(Opens opens, const char* missing) {
        if (!mOpens.contains(opens)) {
            mReader.FailAt(mLocation, "nothing can be waiting for this answer", missing);
        }
    }

    void SeeWhatIsAnswered(const AnswerLoginStep& /*step*/) {
        Require(Opens::kLogin, "put a \"login\" step before this answer");
    }
    void SeeWhatIsAnswered(const AnswerFriendFinderStep& /*step*/) {
        Require(Opens::kFriendFinder, "put an \"add-friend\" of a gaming login before this answer");
    }
    void SeeWhatIsAnswered(const AnswerGameRequestStep& /*step*/) {
        Require(Opens::kInvitation, "put a \"send-message\" of type \"invitation\" before this answer");
    }
    void SeeWhatIsAnswered(const AnswerShareStep& /*step*/) {
        Require(Opens::kShare, "put a \"share\" or a \"send-message\" before this answer");
    }
    template <class UploadOrLibraryAnswer>
    void SeeWhatIsAnswered(const UploadOrLibraryAnswer& /*step*/) {
        Require(Opens::kShare, "put a \"share\" of an image or a video before this answer");
    }

    void ExpectedObservers() {
        if (!mWorld.expectations.results) {
            return;
        }
        for (const ExpectedResult& result : *mWorld.expectations.results) {
            if (result.observerID && !mObservers.contains(*result.observerID)) {
                mReader.FailAt(result.location, "no request is for observer " + std::to_string(*result.observerID),
                               "use the observer of a request, or one of 101, 107, 108, 109, 202");
            }
        }
    }

    StepReader& mReader;
    const World& mWorld;
    JsonLocation mLocation;
    std::set<unsigned> mObservers;
    std::set<std::string> mRequests;
    std::set<Opens> mOpens;
};

} // namespace

void CheckWorld(StepReader& reader, const World& world) {
    Check(reader, world).Run();
}

} // namespace Tarvik::Vorn::Simulator
