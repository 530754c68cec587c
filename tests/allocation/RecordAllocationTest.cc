// The records when memory runs out. Each operation is tried with each of its allocations failing.

#include "FailEveryAllocation.h"

#include "VornRecords.h"
#include "VornServices.h"

#include <cstring>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

constexpr const char* kLong = "a text that is longer than what a standard text holds inside";
constexpr const char* kOther = "the text that was there before, long enough for a buffer of its own";

// ---- String: there is none, or all of it.

// Tries a constructor. `construct` returns the new record.
template <class Construct, class Check>
void FailConstruction(const Construct& construct, const Check& isWhole) {
    using Record = decltype(construct());
    FailEveryAllocation([] { return Slot<Record>(); }, [&construct](Slot<Record>& slot) { slot.Make(construct); },
                        [&isWhole](const Slot<Record>& slot, Ending ending) {
                            ASSERT_EQ(slot.Get() != nullptr, ending == Ending::kDone);
                            if (slot.Get() != nullptr) {
                                EXPECT_TRUE(isWhole(*slot.Get()));
                            }
                        });
}

// Tries the assignment of `value` to a record that has been something else before.
template <class Record, class Check>
void FailAssignment(const Record& before, const Record& value, const Check& isWhole) {
    FailEveryAllocation([&before] { return Record(before); }, [&value](Record& target) { target = value; },
                        [&isWhole](const Record& target, Ending ending) {
                            if (ending == Ending::kDone) {
                                EXPECT_TRUE(isWhole(target));
                            }
                        });
}

bool Holds(const String& text, const char* expected) {
    return text.size() == std::strlen(expected) && std::strcmp(text.c_str(), expected) == 0;
}

TEST(StringAllocationTest, Default) {
    FailConstruction([] { return String(); }, [](const String& text) { return Holds(text, ""); });
}

TEST(StringAllocationTest, FromACText) {
    FailConstruction([] { return String(kLong); }, [](const String& text) { return Holds(text, kLong); });
}

TEST(StringAllocationTest, FromAStandardText) {
    const std::string source(kLong);
    FailConstruction([&] { return String(source); }, [](const String& text) { return Holds(text, kLong); });
}

TEST(StringAllocationTest, Copy) {
    const String source(kLong);
    FailConstruction([&] { return String(source); }, [](const String& text) { return Holds(text, kLong); });
}

// After a failed assignment a text has no buffer and reads as the empty one.
void ExpectWholeOrEmpty(const String& text, Ending ending, const char* expected) {
    if (ending == Ending::kDone) {
        EXPECT_TRUE(Holds(text, expected));
        return;
    }
    EXPECT_EQ(text.size(), 0U);
    EXPECT_EQ(text.toString(), "");
}

TEST(StringAllocationTest, AssignedACText) {
    FailEveryAllocation([] { return String(kOther); }, [](String& text) { text = kLong; },
                        [](const String& text, Ending ending) { ExpectWholeOrEmpty(text, ending, kLong); });
}

TEST(StringAllocationTest, AssignedAText) {
    const String value(kLong);
    FailEveryAllocation([] { return String(kOther); }, [&](String& text) { text = value; },
                        [](const String& text, Ending ending) { ExpectWholeOrEmpty(text, ending, kLong); });
}

// Kept: the old buffer stays with whoever reads it, here with the state, which frees it.
TEST(StringAllocationTest, KeptAssignedNull) {
    struct State {
        State() : text(kOther), buffer(const_cast<char*>(text.c_str())) {}
        State(const State&) = delete;
        State& operator=(const State&) = delete;
        ~State() { std::free(buffer); }
        String text;
        char* buffer;
    };
    FailEveryAllocation([] { return State(); },
                        [](State& state) {
                            if (state.text.c_str() == state.buffer) {
                                state.text = static_cast<const char*>(nullptr);
                            } else {
                                state.text = "";
                            }
                        },
                        [](const State& state, Ending ending) {
                            ExpectWholeOrEmpty(state.text, ending, "");
                            EXPECT_STREQ(state.buffer, kOther);
                        });
}

TEST(StringAllocationTest, AsAStandardText) {
    const String source(kLong);
    FailConstruction([&] { return source.toString(); }, [](const std::string& text) { return text == kLong; });
}

// ---- Vector

using People = Vector<InnerPersonInfo, 2>;

InnerPersonInfo Person(const char* text) {
    InnerPersonInfo person;
    person.coreText1 = text;
    person.coreNumber3 = 3;
    person.coreText8 = text;
    return person;
}

bool IsPerson(const InnerPersonInfo& person, const char* text) {
    return Holds(person.coreText1, text) && person.coreNumber3 == 3 && Holds(person.coreText8, text) &&
           Holds(person.coreText5, "");
}

People PeopleOf(uint32_t count) {
    People people;
    for (uint32_t i = 0; i < count; ++i) {
        people.push_back(Person(kOther));
    }
    return people;
}

bool AreAll(const People& people, uint32_t count, const char* text) {
    for (uint32_t i = 0; i < people.size(); ++i) {
        if (!IsPerson(people[i], text)) {
            return false;
        }
    }
    return people.size() == count;
}

TEST(VectorAllocationTest, Default) {
    FailConstruction([] { return People(); }, [](const People& people) { return people.capacity() == 2; });
}

TEST(VectorAllocationTest, Copy) {
    const People source = PeopleOf(3);
    FailConstruction([&] { return People(source); },
                     [](const People& people) { return AreAll(people, 3, kOther) && people.capacity() == 4; });
}

TEST(VectorAllocationTest, AssignedKeepsTheOldElementsUntilTheNewOnesAreThere) {
    const People value = PeopleOf(2);
    FailEveryAllocation([] { return PeopleOf(3); }, [&](People& people) { people = value; },
                        [](const People& people, Ending ending) {
                            EXPECT_TRUE(AreAll(people, ending == Ending::kDone ? 2 : 3, kOther));
                        });
}

void ExpectAdded(const People& people, Ending ending, uint32_t before) {
    const bool isAdded = ending == Ending::kDone;
    ASSERT_EQ(people.size(), isAdded ? before + 1 : before);
    for (uint32_t i = 0; i < before; ++i) {
        EXPECT_TRUE(IsPerson(people[i], kOther));
    }
    if (isAdded) {
        EXPECT_TRUE(IsPerson(people[before], kLong));
    }
}

TEST(VectorAllocationTest, AddedWhereThereIsRoom) {
    const InnerPersonInfo added = Person(kLong);
    FailEveryAllocation([] { return PeopleOf(1); }, [&](People& people) { people.push_back(added); },
                        [](const People& people, Ending ending) { ExpectAdded(people, ending, 1); });
}

TEST(VectorAllocationTest, AddedWhereItMustGrow) {
    const InnerPersonInfo added = Person(kLong);
    FailEveryAllocation([] { return PeopleOf(2); }, [&](People& people) { people.push_back(added); },
                        [](const People& people, Ending ending) { ExpectAdded(people, ending, 2); });
}

// A failed addition that nobody tries again: what it had taken goes with the array.
TEST(VectorAllocationTest, AFailedAdditionLeavesNothingBehind) {
    const InnerPersonInfo added = Person(kLong);
    for (const uint64_t nth : {1U, 2U, 5U, 7U}) {
        size_t outstanding = 0;
        {
            const AllocationWatch watch;
            {
                People people = PeopleOf(1);
                const auto add = [&](People& target) { target.push_back(added); };
                EXPECT_EQ(RunWithFault({nth, false}, people, add), Ending::kOutOfMemory);
                EXPECT_EQ(people.size(), 1U);
            }
            outstanding = AllocationWatch::Outstanding();
        }
        EXPECT_EQ(outstanding, 0U) << "allocation " << nth;
    }
}

// ---- Results and parameters

bool IsResult(const InnerBaseRet& result, const char* retMsg, const char* thirdMsg) {
    return Holds(result.retMsg, retMsg) && Holds(result.thirdMsg, thirdMsg) && Holds(result.extraJson, "");
}

InnerBaseRet Result() {
    return {15, 15, kLong};
}

TEST(ResultAllocationTest, BaseByDefault) {
    FailConstruction([] { return InnerBaseRet(); }, [](const InnerBaseRet& ret) { return IsResult(ret, "", ""); });
}

TEST(ResultAllocationTest, BaseOfACode) {
    FailConstruction([] { return InnerBaseRet(0); },
                     [](const InnerBaseRet& ret) { return IsResult(ret, "success", ""); });
}

TEST(ResultAllocationTest, BaseOfACodeWithAText) {
    FailConstruction([] { return Result(); },
                     [](const InnerBaseRet& ret) { return IsResult(ret, "a required app is not installed", kLong); });
}

TEST(ResultAllocationTest, BaseCopy) {
    const InnerBaseRet source = Result();
    FailConstruction([&] { return InnerBaseRet(source); },
                     [](const InnerBaseRet& ret) { return Holds(ret.thirdMsg, kLong); });
}

TEST(ResultAllocationTest, BaseAssigned) {
    FailAssignment(InnerBaseRet(0), Result(), [](const InnerBaseRet& ret) { return Holds(ret.thirdMsg, kLong); });
}

InnerFriendRet Friends() {
    InnerFriendRet friends(0);
    friends.friendInfoList.push_back(Person(kOther));
    friends.friendInfoList.push_back(Person(kOther));
    friends.extraText = kLong;
    return friends;
}

bool AreFriends(const InnerFriendRet& friends) {
    return friends.friendInfoList.size() == 2 && IsPerson(friends.friendInfoList[1], kOther) &&
           Holds(friends.extraText, kLong);
}

TEST(ResultAllocationTest, FriendsOfACode) {
    FailConstruction([] { return InnerFriendRet(7); },
                     [](const InnerFriendRet& ret) { return ret.friendInfoList.empty() && ret.retCode == 7; });
}

TEST(ResultAllocationTest, FriendsCopy) {
    const InnerFriendRet source = Friends();
    FailConstruction([&] { return InnerFriendRet(source); }, &AreFriends);
}

TEST(ResultAllocationTest, FriendsAssigned) {
    FailAssignment(InnerFriendRet(7), Friends(), &AreFriends);
}

InnerLoginRet Login() {
    InnerLoginRet login;
    login.channel = kLong;
    login.coreText27 = kLong;
    return login;
}

bool IsLogin(const InnerLoginRet& login) {
    return Holds(login.channel, kLong) && Holds(login.coreText27, kLong) && Holds(login.coreText7, "");
}

TEST(ResultAllocationTest, LoginByDefault) {
    FailConstruction([] { return InnerLoginRet(); },
                     [](const InnerLoginRet& login) { return Holds(login.coreText27, "") && login.channelID == 0; });
}

TEST(ResultAllocationTest, LoginCopy) {
    const InnerLoginRet source = Login();
    FailConstruction([&] { return InnerLoginRet(source); }, &IsLogin);
}

TEST(ResultAllocationTest, LoginAssigned) {
    FailAssignment(InnerLoginRet(), Login(), &IsLogin);
}

InnerLoginPluginRet Reply() {
    InnerLoginPluginRet reply;
    reply.channelInfo = kLong;
    reply.coreText7 = kLong;
    return reply;
}

bool IsReply(const InnerLoginPluginRet& reply) {
    return reply.channelInfo == kLong && reply.coreText7 == kLong && reply.channel.empty();
}

TEST(ResultAllocationTest, LoginReplyCopy) {
    const InnerLoginPluginRet source = Reply();
    FailConstruction([&] { return InnerLoginPluginRet(source); }, &IsReply);
}

TEST(ResultAllocationTest, LoginReplyAssigned) {
    FailAssignment(InnerLoginPluginRet(), Reply(), &IsReply);
}

VornFriendReqInfo Request() {
    VornFriendReqInfo request;
    request.type = 10001;
    request.user = kLong;
    request.extraJson = kLong;
    return request;
}

bool IsRequest(const VornFriendReqInfo& request) {
    return request.type == 10001 && Holds(request.user, kLong) && Holds(request.extraJson, kLong) &&
           Holds(request.link, "");
}

TEST(RequestAllocationTest, ByDefault) {
    FailConstruction([] { return VornFriendReqInfo(); },
                     [](const VornFriendReqInfo& request) { return Holds(request.extraJson, ""); });
}

TEST(RequestAllocationTest, Copy) {
    const VornFriendReqInfo source = Request();
    FailConstruction([&] { return VornFriendReqInfo(source); }, &IsRequest);
}

TEST(RequestAllocationTest, Assigned) {
    FailAssignment(VornFriendReqInfo(), Request(), &IsRequest);
}

TEST(RequestAllocationTest, AsJson) {
    const VornFriendReqInfo request = Request();
    FailConstruction([&] { return VornJsonManager::ToJson(request, ""); },
                     [](const std::string& json) { return json.find(kLong) != std::string::npos; });
}

VornLoginParams Params() {
    VornLoginParams params;
    params.seqID = kLong;
    params.permissions = kLong;
    return params;
}

bool AreParams(const VornLoginParams& params) {
    return params.seqID == kLong && params.permissions == kLong && params.channel.empty();
}

TEST(RequestAllocationTest, ParametersCopied) {
    const VornLoginParams source = Params();
    FailConstruction([&] { return VornLoginParams(source); }, &AreParams);
}

TEST(RequestAllocationTest, ParametersAssigned) {
    FailAssignment(VornLoginParams(), Params(), &AreParams);
}

// ---- Results on their way

TEST(WaitingAllocationTest, MadeFromAResult) {
    const InnerFriendRet result = Friends();
    const String seqID(kLong);
    FailConstruction([&] { return VornCallBackParams<InnerFriendRet>(result, 31, seqID); },
                     [](const auto& waiting) { return AreFriends(waiting.mRet) && Holds(waiting.mSeqID, kLong); });
}

TEST(WaitingAllocationTest, Copied) {
    const VornCallBackParams<InnerLoginRet> source(Login(), 31, kLong);
    FailConstruction([&] { return VornCallBackParams<InnerLoginRet>(source); },
                     [](const auto& waiting) { return IsLogin(waiting.mRet) && Holds(waiting.mSeqID, kLong); });
}

} // namespace
} // namespace Tarvik::Vorn::Test
