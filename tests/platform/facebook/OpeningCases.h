// The nine things that wait for an answer, in a form in which one test runs with each of them.
#pragma once

#include "FacebookPlatformTest.h"
#include "Openings.h"

#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

// Counts every answer that it hears as a delegate, or that a handler adds to it.
@interface VornAnswerCounter : NSObject <FBSDKSharingDelegate, FBSDKGameRequestDialogDelegate> {
@public
    int answers;
}
@end

namespace Tarvik::Vorn::Test {

struct OpeningCase {
    std::string name;
    Host::Opening opening = Host::Opening::kLogin;
    // The call that opens it, as PlatformCalls names it.
    std::string className;
    std::string selector;
    // Opens it; what show answers, otherwise true. The counter hears the answers and must outlive them.
    bool (*open)(VornAnswerCounter* counter) = nullptr;
    // Answers the one at the index, or the only one that there can be.
    bool (*answer)(size_t index, Host::Closing closing) = nullptr;
    // How many wait for their answer.
    size_t (*waiting)() = nullptr;
};

std::vector<OpeningCase> OpeningCases();

// The name of the test that runs with this case.
inline std::string NameOfCase(const ::testing::TestParamInfo<OpeningCase>& info) {
    return info.param.name;
}

inline void PrintTo(const OpeningCase& openingCase, std::ostream* out) {
    *out << openingCase.name;
}

// A fixture for them: somebody is logged in, so that uploads can start.
class OpeningTest : public FacebookPlatformTest, public ::testing::WithParamInterface<OpeningCase> {
protected:
    OpeningTest() { Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[])); }
    // While the counter still hears it.
    ~OpeningTest() override { Host::ResetPlatform(); }

    VornAnswerCounter* Counter() const { return mCounter.get(); }
    int Answers() const { return mCounter.get()->answers; }

    bool Open() const { return GetParam().open(Counter()); }
    static bool Answer(Host::Closing closing = Host::Closing::kCloses, size_t index = 0) {
        return GetParam().answer(index, closing);
    }
    static size_t Waiting() { return GetParam().waiting(); }

private:
    RetainPtr<VornAnswerCounter*> mCounter = AdoptNS([[VornAnswerCounter alloc] init]);
};

} // namespace Tarvik::Vorn::Test
