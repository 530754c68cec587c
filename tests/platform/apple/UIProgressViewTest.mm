// UIProgressView: keeps what it is given, and tells the record all of it.
#include "UIKit/UIColor+Control.h"

#include "ApplePlatformTest.h"

#include <cmath>
#include <limits>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UIProgressViewFacts : public ApplePlatformTest {
protected:
    // A bar whose making is not in the record any more.
    static UIProgressView* MakeBar(UIProgressViewStyle style = UIProgressViewStyleDefault) {
        UIProgressView* const bar = [[[UIProgressView alloc] initWithProgressViewStyle:style] autorelease];
        Host::PlatformCalls::Clear();
        return bar;
    }
};

#pragma mark - What it keeps

TEST_F(UIProgressViewFacts, ANewBarShowsNothing) {
    UIProgressView* const bar = MakeBar();

    EXPECT_EQ([bar progress], 0);
    EXPECT_EQ([bar progressTintColor], nil);
    EXPECT_EQ([bar trackTintColor], nil);
    EXPECT_FALSE([bar isHidden]);
}

TEST_F(UIProgressViewFacts, ANewBarIs150By4Points) {
    EXPECT_TRUE(NSEqualRects([MakeBar() frame], CGRectMake(0, 0, 150, 4)));
}

TEST_F(UIProgressViewFacts, TheStyleIsTheOneItWasMadeWith) {
    EXPECT_EQ([MakeBar(UIProgressViewStyleDefault) progressViewStyle], UIProgressViewStyleDefault);
    EXPECT_EQ([MakeBar(UIProgressViewStyleBar) progressViewStyle], UIProgressViewStyleBar);
}

TEST_F(UIProgressViewFacts, TheStyleCanBeChanged) {
    UIProgressView* const bar = MakeBar();

    [bar setProgressViewStyle:UIProgressViewStyleBar];

    EXPECT_EQ([bar progressViewStyle], UIProgressViewStyleBar);
}

TEST_F(UIProgressViewFacts, ProgressBeyondTheRangeIsKept) {
    UIProgressView* const bar = MakeBar();

    for (const float progress : {0.25f, 1.0f, -3.0f, 7.5f, std::numeric_limits<float>::infinity()}) {
        [bar setProgress:progress];
        EXPECT_EQ([bar progress], progress);
    }
}

TEST_F(UIProgressViewFacts, ProgressThatIsNoNumberIsKept) {
    UIProgressView* const bar = MakeBar();

    [bar setProgress:std::nanf("")];

    EXPECT_TRUE(std::isnan([bar progress]));
}

TEST_F(UIProgressViewFacts, TheFrameIsKeptWithItsHeight) {
    UIProgressView* const bar = MakeBar();

    [bar setFrame:CGRectMake(1, 2, 3, 40)];

    EXPECT_TRUE(NSEqualRects([bar frame], CGRectMake(1, 2, 3, 40)));
}

TEST_F(UIProgressViewFacts, TheTintsAreKeptApart) {
    UIProgressView* const bar = MakeBar();
    UIColor* const progressTint = [UIColor colorWithRed:1 green:0 blue:0 alpha:1];
    UIColor* const trackTint = [UIColor colorWithRed:0 green:1 blue:0 alpha:1];

    [bar setProgressTintColor:progressTint];
    [bar setTrackTintColor:trackTint];

    EXPECT_EQ([bar progressTintColor], progressTint);
    EXPECT_EQ([bar trackTintColor], trackTint);
}

TEST_F(UIProgressViewFacts, ATintIsRetainedUntilItIsReplaced) {
    UIProgressView* const bar = MakeBar();
    UIColor* const tint = [UIColor colorWithRed:1 green:0 blue:0 alpha:1];
    const NSUInteger count = [tint retainCount];

    [bar setTrackTintColor:tint];
    const NSUInteger countWhileSet = [tint retainCount];
    [bar setTrackTintColor:nil];

    EXPECT_EQ(countWhileSet, count + 1);
    EXPECT_EQ([tint retainCount], count);
}

#pragma mark - What it records

TEST_F(UIProgressViewFacts, MakingABarIsRecordedWithItsStyle) {
    const RetainPtr<UIProgressView*> bar =
        AdoptNS([[UIProgressView alloc] initWithProgressViewStyle:UIProgressViewStyleBar]);

    EXPECT_THAT(RecordedCalls(), ElementsAre("UIProgressView initWithProgressViewStyle: 1"));
}

TEST_F(UIProgressViewFacts, ChangesAreRecordedWithTheirShortestNumbers) {
    UIProgressView* const bar = MakeBar();

    [bar setFrame:CGRectMake(0, 0.5, 390, 4)];
    [bar setHidden:YES];
    [bar setHidden:NO];
    [bar setProgress:0.1f];
    [bar setProgress:1];
    [bar setProgressViewStyle:UIProgressViewStyleBar];
    [bar removeFromSuperview];

    EXPECT_THAT(RecordedCalls(), ElementsAre("UIProgressView setFrame: [0,0.5,390,4]", "UIProgressView setHidden: YES",
                                             "UIProgressView setHidden: NO", "UIProgressView setProgress: 0.1",
                                             "UIProgressView setProgress: 1", "UIProgressView setProgressViewStyle: 1",
                                             "UIProgressView removeFromSuperview"));
}

TEST_F(UIProgressViewFacts, NumbersThatAreNoneAreRecordedByName) {
    UIProgressView* const bar = MakeBar();

    [bar setProgress:std::nanf("")];
    [bar setProgress:-std::nanf("")];
    [bar setProgress:std::numeric_limits<float>::infinity()];
    [bar setProgress:-std::numeric_limits<float>::infinity()];

    EXPECT_THAT(RecordedCalls(), ElementsAre("UIProgressView setProgress: nan", "UIProgressView setProgress: nan",
                                             "UIProgressView setProgress: inf", "UIProgressView setProgress: -inf"));
}

TEST_F(UIProgressViewFacts, TintsAreRecordedWithTheirComponents) {
    UIProgressView* const bar = MakeBar();

    [bar setProgressTintColor:[UIColor colorWithRed:0.1 green:0.2 blue:0.3 alpha:1]];
    [bar setTrackTintColor:[UIColor colorWithRed:1 green:0.5 blue:0 alpha:0.25]];
    [bar setTrackTintColor:nil];

    EXPECT_THAT(RecordedCalls(), ElementsAre("UIProgressView setProgressTintColor: [0.1,0.2,0.3,1]",
                                             "UIProgressView setTrackTintColor: [1,0.5,0,0.25]",
                                             "UIProgressView setTrackTintColor: nil"));
}

TEST_F(UIProgressViewFacts, ReadingIsNotRecorded) {
    UIProgressView* const bar = MakeBar();

    [bar progress];
    [bar frame];
    [bar isHidden];
    [bar progressViewStyle];
    [bar progressTintColor];
    [bar trackTintColor];

    EXPECT_THAT(RecordedCalls(), IsEmpty());
}

TEST_F(UIProgressViewFacts, ThreadsThatSetAndReadATintKeepItAlive) {
    UIProgressView* const bar = MakeBar();
    const auto work = [bar] {
        @autoreleasepool {
            for (int i = 0; i < 500; ++i) {
                [bar setTrackTintColor:[UIColor colorWithRed:i green:0 blue:0 alpha:1]];
                UIColor* const tint = [bar trackTintColor];
                EXPECT_EQ(Host::ComponentsOf(tint).alpha, 1);
            }
        }
    };

    std::thread other(work);
    work();
    other.join();
}

} // namespace
} // namespace Tarvik::Vorn::Test
