// NSError as Apple documents it: codes, texts, user info, equality and coding, also for subclasses.

#include "PoolTest.h"
#include "Witness.h"

#include <cerrno>
#include <climits>
#include <string>

// A subclass, as apps have them.
@interface HostAppError : NSError
@end
@implementation HostAppError
@end

namespace {

class HostErrors : public Tarvik::Vorn::Test::PoolTest {
protected:
    static NSError* Make(NSInteger code, NSDictionary* userInfo) {
        return [NSError errorWithDomain:@"com.x" code:code userInfo:userInfo];
    }
};

void ExpectText(NSString* actual, const char* expected) {
    ASSERT_NE(actual, nil);
    EXPECT_STREQ([actual UTF8String], expected);
}

TEST_F(HostErrors, CodesHaveSixtyFourBits) {
    for (const NSInteger code : {NSInteger{0}, NSInteger{-5}, NSInteger{1} << 33, LONG_MAX, LONG_MIN}) {
        EXPECT_EQ([Make(code, nil) code], code);
        EXPECT_EQ([[[[NSError alloc] initWithDomain:@"com.x" code:code userInfo:nil] autorelease] code], code);
        EXPECT_EQ([[HostAppError errorWithDomain:@"com.x" code:code userInfo:nil] code], code);
    }
}

TEST_F(HostErrors, WithoutTextsTheDescriptionForPeopleNamesDomainAndCode) {
    ExpectText([Make(-5, nil) localizedDescription], "The operation couldn’t be completed. (com.x error -5.)");
    ExpectText([Make(NSInteger{1} << 33, nil) localizedDescription],
               "The operation couldn’t be completed. (com.x error 8589934592.)");
    ExpectText([[NSError errorWithDomain:NSCocoaErrorDomain code:4 userInfo:nil] localizedDescription],
               "The operation couldn’t be completed. (Cocoa error 4.)");
    ExpectText([[NSError errorWithDomain:NSOSStatusErrorDomain code:-50 userInfo:nil] localizedDescription],
               "The operation couldn’t be completed. (OSStatus error -50.)");
}

TEST_F(HostErrors, TheDescriptionForPeopleIsTheGivenOne) {
    NSError* error = Make(1, @{NSLocalizedDescriptionKey : @"no network", NSLocalizedFailureReasonErrorKey : @"why"});

    ExpectText([error localizedDescription], "no network");
}

TEST_F(HostErrors, TheDescriptionForPeopleFallsBackToTheReason) {
    NSError* error = Make(1, @{NSLocalizedFailureReasonErrorKey : @"The disk is full."});

    ExpectText([error localizedDescription], "The operation couldn’t be completed. The disk is full.");
    ExpectText([error localizedFailureReason], "The disk is full.");
}

TEST_F(HostErrors, SystemErrorsHaveTheSystemsReason) {
    NSError* error = [NSError errorWithDomain:NSPOSIXErrorDomain code:ENOENT userInfo:nil];

    ExpectText([error localizedDescription], "The operation couldn’t be completed. No such file or directory");
    EXPECT_EQ([[NSError errorWithDomain:NSPOSIXErrorDomain code:99999 userInfo:nil] localizedFailureReason], nil);
    EXPECT_EQ([Make(ENOENT, nil) localizedFailureReason], nil);
}

TEST_F(HostErrors, TheDescriptionForDevelopersNamesDomainCodeAndText) {
    ExpectText([Make(-5, nil) description], "Error Domain=com.x Code=-5 \"(null)\"");
    ExpectText([Make(2, @{NSLocalizedDescriptionKey : @"no network"}) description],
               "Error Domain=com.x Code=2 \"no network\" UserInfo={NSLocalizedDescription=no network}");
}

TEST_F(HostErrors, TheDescriptionForDevelopersListsTheUserInfo) {
    NSError* error = Make(
        7,
        @{@"e" : @5,
          @"d" : @4,
          @"c" : @3,
          @"b" : @2,
          @"a" : @1,
          NSURLErrorKey : @"link"});

    ExpectText([error description],
               "Error Domain=com.x Code=7 \"(null)\" UserInfo={NSURL=link, a=1, b=2, c=3, d=4, e=5}");
}

TEST_F(HostErrors, TheDescriptionForDevelopersNestsErrorsWithTheirAddress) {
    NSError* cause = Make(1, nil);
    NSError* error = Make(2, @{NSUnderlyingErrorKey : cause});

    NSString* expected = [NSString
        stringWithFormat:@"Error Domain=com.x Code=2 \"(null)\" UserInfo={NSUnderlyingError=%p {Error Domain=com.x "
                         @"Code=1 \"(null)\"}}",
                         cause];
    ExpectText([error description], [expected UTF8String]);
}

TEST_F(HostErrors, TheUserInfoIsNeverNil) {
    NSDictionary* userInfo = [Make(1, nil) userInfo];

    ASSERT_NE(userInfo, nil);
    EXPECT_EQ([userInfo count], 0U);
}

TEST_F(HostErrors, DomainAndUserInfoAreCopied) {
    NSMutableString* domain = [NSMutableString stringWithString:@"com.x"];
    NSMutableDictionary* userInfo = [NSMutableDictionary dictionaryWithObject:@"v" forKey:@"k"];
    NSError* error = [NSError errorWithDomain:domain code:1 userInfo:userInfo];

    [domain appendString:@".changed"];
    [userInfo removeAllObjects];

    ExpectText([error domain], "com.x");
    EXPECT_EQ([[error userInfo] count], 1U);
}

TEST_F(HostErrors, ANilDomainRaises) {
    NSString* name = nil;
    @try {
        NSString* const nothing = nil;
        [NSError errorWithDomain:nothing code:1 userInfo:nil];
    } @catch (NSException* exception) {
        name = [exception name];
    }

    ASSERT_NE(name, nil);
    EXPECT_TRUE([name isEqualToString:NSInvalidArgumentException]);
}

TEST_F(HostErrors, ErrorsAreEqualByDomainCodeAndUserInfo) {
    NSError* error = Make(1, @{@"k" : @"v"});

    EXPECT_TRUE([error isEqual:Make(1, @{@"k" : @"v"})]);
    EXPECT_EQ([error hash], [Make(1, @{@"k" : @"v"}) hash]);
    EXPECT_FALSE([error isEqual:Make(2, @{@"k" : @"v"})]);
    EXPECT_FALSE([error isEqual:Make(1, nil)]);
    EXPECT_FALSE([error isEqual:[NSError errorWithDomain:@"com.y" code:1 userInfo:@{@"k" : @"v"}]]);
    EXPECT_FALSE([error isEqual:@"error"]);
}

TEST_F(HostErrors, ACopyIsTheSameErrorRetained) {
    NSError* error = [[NSError alloc] initWithDomain:@"com.x" code:1 userInfo:nil];

    NSError* copied = [error copy];

    EXPECT_EQ(copied, error);
    EXPECT_EQ([error retainCount], 2U);
    [copied release];
    [error release];
}

TEST_F(HostErrors, ErrorsSurviveBothKindsOfArchive) {
    NSError* error = Make(NSInteger{1} << 40, @{@"k" : @"v"});

    NSError* keyed = [NSKeyedUnarchiver unarchiveObjectWithData:[NSKeyedArchiver archivedDataWithRootObject:error]];
    NSError* sequential = [NSUnarchiver unarchiveObjectWithData:[NSArchiver archivedDataWithRootObject:error]];

    EXPECT_TRUE([keyed isEqual:error]);
    EXPECT_TRUE([sequential isEqual:error]);
}

TEST_F(HostErrors, AnErrorLetsGoOfItsUserInfo) {
    @autoreleasepool {
        HostWitness* witness = [[[HostWitness alloc] init] autorelease];
        (void)Make(NSInteger{0x1234567890}, @{@"witness" : witness});
        EXPECT_EQ([HostWitness living], 1);
    }

    EXPECT_EQ([HostWitness living], 0);
}

TEST_F(HostErrors, SubclassesHaveTheSameTexts) {
    NSError* error = [HostAppError errorWithDomain:@"com.app" code:3 userInfo:nil];

    EXPECT_TRUE([error isMemberOfClass:[HostAppError class]]);
    ExpectText([error localizedDescription], "The operation couldn’t be completed. (com.app error 3.)");
    ExpectText([error description], "Error Domain=com.app Code=3 \"(null)\"");
}

} // namespace
