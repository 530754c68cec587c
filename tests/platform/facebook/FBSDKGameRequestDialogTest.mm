// Game requests: what a content holds and must be like, where the dialog opens, and how it ends.
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FacebookPlatformTest.h"
#include "FacebookProfile.h"
#include "UIKit/UIApplication+Control.h"

#include <stdexcept>

// What the delegate of a game-request dialog was told.
@interface VornGameRequestDelegate : NSObject <FBSDKGameRequestDialogDelegate> {
@public
    std::vector<std::string> events; // "complete", "fail" and "cancel".
    Tarvik::Vorn::RetainPtr<NSDictionary*> results;
    Tarvik::Vorn::RetainPtr<NSError*> error;
    FBSDKGameRequestDialog* dialog; // Not retained: it is compared only.
    std::thread::id thread;
    std::function<void()> reaction; // What it does when it is told, if anything.
}
@end

@implementation VornGameRequestDelegate

- (void)noteEvent:(const char*)event ofDialog:(FBSDKGameRequestDialog*)gameRequestDialog {
    events.emplace_back(event);
    dialog = gameRequestDialog;
    thread = std::this_thread::get_id();
    if (reaction) {
        reaction();
    }
}

- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog
    didCompleteWithResults:(NSDictionary<NSString*, id>*)theResults {
    results = Tarvik::Vorn::RetainPtr<NSDictionary*>(theResults);
    [self noteEvent:"complete" ofDialog:gameRequestDialog];
}

- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog didFailWithError:(NSError*)theError {
    error = Tarvik::Vorn::RetainPtr(theError);
    [self noteEvent:"fail" ofDialog:gameRequestDialog];
}

- (void)gameRequestDialogDidCancel:(FBSDKGameRequestDialog*)gameRequestDialog {
    [self noteEvent:"cancel" ofDialog:gameRequestDialog];
}

@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::AnswerGameRequest;
using Host::FacebookProfile;
using Host::GameRequest;
using Host::GameRequestAnswer;
using Host::GameRequestRoute;
using Host::GameRequests;
using Host::OpenGameRequestCount;
using Host::PlatformCall;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A content that is valid.
FBSDKGameRequestContent* Content() {
    FBSDKGameRequestContent* const content = [[[FBSDKGameRequestContent alloc] init] autorelease];
    [content setTitle:@"Title"];
    [content setMessage:@"Message"];
    return content;
}

FBSDKGameRequestContent* ContentFor(NSArray<NSString*>* recipients) {
    FBSDKGameRequestContent* const content = Content();
    [content setRecipients:recipients];
    return content;
}

NSString* TextOfLength(size_t length) {
    return [NSString stringWithUTF8String:std::string(length, 'x').c_str()];
}

std::vector<std::string> List(NSArray* texts) {
    std::vector<std::string> result;
    for (NSString* text in texts) {
        result.push_back(Text(text));
    }
    return result;
}

std::string ErrorText(NSError* error) {
    return error == nil ? "no error" : Text([error domain]) + " " + std::to_string([error code]);
}

// Nil where the declaration does not allow it.
NSString* NoText() {
    return nil;
}

NSArray* NoList() {
    return nil;
}

FBSDKGameRequestContent* NoContent() {
    return nil;
}

// "valid", or the error.
std::string Validation(FBSDKGameRequestContent* content) {
    NSError* error = nil;
    const BOOL isValid = [content validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error];
    EXPECT_EQ(isValid, error == nil);
    return isValid ? "valid" : ErrorText(error);
}

const char* const kRefused = "com.facebook.sdk.share 2";

#pragma mark - Content

class FacebookGameRequestContent : public FacebookPlatformTest {};

TEST_F(FacebookGameRequestContent, IsEmptyAtFirst) {
    const RetainPtr<FBSDKGameRequestContent*> content = AdoptNS([[FBSDKGameRequestContent alloc] init]);

    EXPECT_EQ(Text([content.get() message]), "");
    EXPECT_EQ(Text([content.get() title]), "");
    EXPECT_EQ(Text([content.get() objectID]), "");
    EXPECT_EQ(Text([content.get() cta]), "");
    EXPECT_EQ(Text([content.get() data]), "(nil)");
    ASSERT_NE([content.get() recipients], nil);
    EXPECT_THAT(List([content.get() recipients]), IsEmpty());
    ASSERT_NE([content.get() recipientSuggestions], nil);
    EXPECT_THAT(List([content.get() recipientSuggestions]), IsEmpty());
    EXPECT_EQ([content.get() filters], FBSDKGameRequestFilterNone);
    EXPECT_EQ([content.get() actionType], FBSDKGameRequestActionTypeNone);
}

// One with another value in each property.
FBSDKGameRequestContent* FullContent() {
    FBSDKGameRequestContent* const content = Content();
    [content setObjectID:@"object"];
    [content setCta:@"cta"];
    [content setData:@"data"];
    [content setRecipients:@[ @"1", @"2" ]];
    [content setRecipientSuggestions:@[ @"3" ]];
    [content setFilters:FBSDKGameRequestFilterAppNonUsers];
    [content setActionType:FBSDKGameRequestActionTypeTurn];
    return content;
}

void ExpectFull(FBSDKGameRequestContent* content) {
    EXPECT_EQ(Text([content title]), "Title");
    EXPECT_EQ(Text([content message]), "Message");
    EXPECT_EQ(Text([content objectID]), "object");
    EXPECT_EQ(Text([content cta]), "cta");
    EXPECT_EQ(Text([content data]), "data");
    EXPECT_THAT(List([content recipients]), ElementsAre("1", "2"));
    EXPECT_THAT(List([content recipientSuggestions]), ElementsAre("3"));
    EXPECT_EQ([content filters], FBSDKGameRequestFilterAppNonUsers);
    EXPECT_EQ([content actionType], FBSDKGameRequestActionTypeTurn);
}

TEST_F(FacebookGameRequestContent, HoldsWhatIsSet) {
    ExpectFull(FullContent());
}

TEST_F(FacebookGameRequestContent, NilCountsAsEmpty) {
    FBSDKGameRequestContent* const content = FullContent();

    [content setTitle:NoText()];
    [content setMessage:NoText()];
    [content setObjectID:NoText()];
    [content setCta:NoText()];
    [content setData:NoText()];
    [content setRecipients:NoList()];
    [content setRecipientSuggestions:NoList()];

    EXPECT_EQ(Text([content title]), "");
    EXPECT_EQ(Text([content message]), "");
    EXPECT_EQ(Text([content objectID]), "");
    EXPECT_EQ(Text([content cta]), "");
    EXPECT_EQ(Text([content data]), "(nil)");
    ASSERT_NE([content recipients], nil);
    EXPECT_THAT(List([content recipients]), IsEmpty());
    ASSERT_NE([content recipientSuggestions], nil);
    EXPECT_THAT(List([content recipientSuggestions]), IsEmpty());
}

TEST_F(FacebookGameRequestContent, CopiesWhatCanChange) {
    FBSDKGameRequestContent* const content = Content();
    NSMutableString* const message = [NSMutableString stringWithString:@"before"];
    NSMutableString* const data = [NSMutableString stringWithString:@"before"];
    NSMutableArray* const recipients = [NSMutableArray arrayWithObject:@"1"];
    [content setMessage:message];
    [content setData:data];
    [content setRecipients:recipients];

    [message setString:@"after"];
    [data setString:@"after"];
    [recipients addObject:@"2"];

    EXPECT_EQ(Text([content message]), "before");
    EXPECT_EQ(Text([content data]), "before");
    EXPECT_THAT(List([content recipients]), ElementsAre("1"));
}

TEST_F(FacebookGameRequestContent, ComesBackFromAnArchive) {
    NSData* const archive = [NSKeyedArchiver archivedDataWithRootObject:FullContent()];

    ExpectFull([NSKeyedUnarchiver unarchiveObjectWithData:archive]);
    EXPECT_TRUE([FBSDKGameRequestContent supportsSecureCoding]);
}

TEST_F(FacebookGameRequestContent, ComesBackFromAnArchiveWithoutData) {
    NSData* const archive = [NSKeyedArchiver archivedDataWithRootObject:Content()];

    EXPECT_EQ(Text([(FBSDKGameRequestContent*)[NSKeyedUnarchiver unarchiveObjectWithData:archive] data]), "(nil)");
}

#pragma mark - Validation

TEST_F(FacebookGameRequestContent, WithAMessageIsValid) {
    EXPECT_EQ(Validation(Content()), "valid");
}

TEST_F(FacebookGameRequestContent, WithoutATitleIsValid) {
    FBSDKGameRequestContent* const content = Content();
    [content setTitle:@""];

    EXPECT_EQ(Validation(content), "valid");
}

TEST_F(FacebookGameRequestContent, WithoutAMessageIsRefused) {
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];

    EXPECT_EQ(Validation(content), kRefused);
}

TEST_F(FacebookGameRequestContent, RecipientsOrAFilterOrSuggestionsAloneAreValid) {
    FBSDKGameRequestContent* const filtered = Content();
    [filtered setFilters:FBSDKGameRequestFilterAppUsers];
    FBSDKGameRequestContent* const suggesting = Content();
    [suggesting setRecipientSuggestions:@[ @"1" ]];

    EXPECT_EQ(Validation(ContentFor(@[ @"1" ])), "valid");
    EXPECT_EQ(Validation(filtered), "valid");
    EXPECT_EQ(Validation(suggesting), "valid");
}

class FacebookGameRequestFilters : public FacebookGameRequestContent,
                                   public ::testing::WithParamInterface<FBSDKGameRequestFilter> {};

INSTANTIATE_TEST_SUITE_P(All, FacebookGameRequestFilters,
                         ::testing::Values(FBSDKGameRequestFilterAppUsers, FBSDKGameRequestFilterAppNonUsers,
                                           FBSDKGameRequestFilterEverybody));

TEST_P(FacebookGameRequestFilters, AreRefusedWithRecipients) {
    FBSDKGameRequestContent* const content = ContentFor(@[ @"1" ]);
    [content setFilters:GetParam()];

    EXPECT_EQ(Validation(content), kRefused);
}

TEST_P(FacebookGameRequestFilters, AreRefusedWithSuggestions) {
    FBSDKGameRequestContent* const content = Content();
    [content setFilters:GetParam()];
    [content setRecipientSuggestions:@[ @"1" ]];

    EXPECT_EQ(Validation(content), kRefused);
}

TEST_F(FacebookGameRequestContent, RecipientsAreRefusedWithSuggestions) {
    FBSDKGameRequestContent* const content = ContentFor(@[ @"1" ]);
    [content setRecipientSuggestions:@[ @"2" ]];

    EXPECT_EQ(Validation(content), kRefused);
}

TEST_F(FacebookGameRequestContent, DataMayHave255CharactersAndNoMore) {
    FBSDKGameRequestContent* const content = Content();

    [content setData:TextOfLength(255)];
    EXPECT_EQ(Validation(content), "valid");
    [content setData:TextOfLength(256)];
    EXPECT_EQ(Validation(content), kRefused);
}

class FacebookGameRequestActions : public FacebookGameRequestContent,
                                   public ::testing::WithParamInterface<FBSDKGameRequestActionType> {
protected:
    static FBSDKGameRequestContent* ContentWithObject(NSString* objectID) {
        FBSDKGameRequestContent* const content = Content();
        [content setActionType:GetParam()];
        [content setObjectID:objectID];
        return content;
    }
};

using FacebookGameRequestActionsOnAnObject = FacebookGameRequestActions;
using FacebookGameRequestActionsOnNone = FacebookGameRequestActions;

INSTANTIATE_TEST_SUITE_P(All, FacebookGameRequestActionsOnAnObject,
                         ::testing::Values(FBSDKGameRequestActionTypeSend, FBSDKGameRequestActionTypeAskFor));
INSTANTIATE_TEST_SUITE_P(All, FacebookGameRequestActionsOnNone,
                         ::testing::Values(FBSDKGameRequestActionTypeNone, FBSDKGameRequestActionTypeTurn,
                                           FBSDKGameRequestActionTypeInvite));

TEST_P(FacebookGameRequestActionsOnAnObject, NeedOne) {
    EXPECT_EQ(Validation(ContentWithObject(@"object")), "valid");
    EXPECT_EQ(Validation(ContentWithObject(@"")), kRefused);
}

TEST_P(FacebookGameRequestActionsOnNone, TakeNone) {
    EXPECT_EQ(Validation(ContentWithObject(@"")), "valid");
    EXPECT_EQ(Validation(ContentWithObject(@"object")), kRefused);
}

TEST_F(FacebookGameRequestContent, IsRefusedAlsoWhereNobodyAsksWhy) {
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];

    EXPECT_FALSE([content validateWithOptions:FBSDKShareBridgeOptionsDefault error:nullptr]);
}

TEST_F(FacebookGameRequestContent, IsRefusedWithAReasonForDevelopersOnly) {
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];
    NSError* error = nil;

    [content validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error];

    EXPECT_EQ(Text([[error userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]), "Value for message is required.");
    EXPECT_EQ([[error userInfo] objectForKey:NSLocalizedDescriptionKey], nil);
}

#pragma mark - Showing

class FacebookGameRequest : public FacebookPlatformTest {
protected:
    FacebookGameRequest() : delegate(AdoptNS([[VornGameRequestDelegate alloc] init])) {}

    FBSDKGameRequestDialog* Show(FBSDKGameRequestContent* content) {
        return [FBSDKGameRequestDialog showWithContent:content delegate:delegate.get()];
    }

    // A dialog that is answered.
    void EndWith(const GameRequestAnswer& answer) {
        Show(Content());
        EXPECT_TRUE(AnswerGameRequest(answer));
        EXPECT_EQ(OpenGameRequestCount(), 0u);
    }

    static void LogIn(NSString* graphDomain) {
        Host::ReplaceCurrentAuthenticationToken(Host::MakeAuthenticationToken(@"id token", graphDomain));
    }

    const std::vector<std::string>& Events() const { return delegate.get()->events; }

    // "key=value" of each entry: a list in brackets, a number as it prints.
    std::set<std::string> Results() const {
        std::set<std::string> entries;
        NSDictionary* const results = delegate.get()->results.get();
        for (NSString* key in results) {
            const id value = [results objectForKey:key];
            std::string text;
            if ([value isKindOfClass:[NSArray class]]) {
                for (const std::string& entry : List(value)) {
                    text += '[' + entry + ']';
                }
            } else if ([value isKindOfClass:[NSNumber class]]) {
                text = "number " + Text([value stringValue]);
            } else {
                text = Text(value);
            }
            entries.insert(Text(key) + '=' + text);
        }
        return entries;
    }

    RetainPtr<VornGameRequestDelegate*> delegate;
};

TEST_F(FacebookGameRequest, OpensInTheBrowserForAnybodyWhoIsNotLoggedInForGaming) {
    Show(Content());
    LogIn(@"facebook");
    Show(Content());
    LogIn(@"");
    Show(Content());

    ASSERT_EQ(GameRequests().size(), 3u);
    for (const GameRequest& request : GameRequests()) {
        EXPECT_EQ(request.route, GameRequestRoute::kWeb);
    }
    EXPECT_EQ(OpenGameRequestCount(), 3u);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(FacebookGameRequest, OpensInFacebooksAppForAGamingLogin) {
    LogIn(@"gaming");

    Show(Content());

    EXPECT_EQ(GameRequests().at(0).route, GameRequestRoute::kGaming);
    EXPECT_EQ(OpenGameRequestCount(), 1u);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(FacebookGameRequest, OpensInTheBrowserWhenFbapiCannotBeOpened) {
    LogIn(@"gaming");
    Host::SetSchemeOpenable(@"fbapi", false);

    Show(Content());

    EXPECT_EQ(GameRequests().at(0).route, GameRequestRoute::kWeb);
}

TEST_F(FacebookGameRequest, OpensInTheBrowserWhenTheInfoPlistDoesNotListFbapi) {
    LogIn(@"gaming");
    Host::RegisterQueriesSchemes(@[ @"fbauth2" ]);

    Show(Content());

    EXPECT_EQ(GameRequests().at(0).route, GameRequestRoute::kWeb);
}

TEST_F(FacebookGameRequest, NeedsNoOtherSchemeThanFbapi) {
    LogIn(@"gaming");
    Host::SetAppInstalled(Host::InstalledApp::kFacebook, false);
    Host::SetSchemeOpenable(@"fbapi", true);

    Show(Content());

    EXPECT_EQ(GameRequests().at(0).route, GameRequestRoute::kGaming);
}

TEST_F(FacebookGameRequest, IsSeenWithTheContentAsItWas) {
    FBSDKGameRequestContent* const content = ContentFor(@[ @"1", @"2" ]);

    Show(content);
    [content setTitle:@"later"];
    [content setRecipients:@[]];
    [content setFilters:FBSDKGameRequestFilterAppUsers];
    Show(content);

    ASSERT_EQ(GameRequests().size(), 2u);
    EXPECT_EQ(GameRequests()[0].title, "Title");
    EXPECT_EQ(GameRequests()[0].message, "Message");
    EXPECT_THAT(GameRequests()[0].recipients, ElementsAre("1", "2"));
    EXPECT_EQ(GameRequests()[0].filters, FBSDKGameRequestFilterNone);
    EXPECT_EQ(GameRequests()[1].title, "later");
    EXPECT_EQ(GameRequests()[1].filters, FBSDKGameRequestFilterAppUsers);
}

TEST_F(FacebookGameRequest, TellsTheWebPageTheRecipients) {
    Show(ContentFor(@[ @"1", @"2" ]));

    EXPECT_THAT(GameRequests().at(0).sentRecipients, ElementsAre("1", "2"));
}

TEST_F(FacebookGameRequest, TellsFacebooksAppTheSuggestionsAndNotTheRecipients) {
    LogIn(@"gaming");
    FBSDKGameRequestContent* const suggesting = Content();
    [suggesting setRecipientSuggestions:@[ @"3" ]];

    Show(ContentFor(@[ @"1", @"2" ]));
    Show(suggesting);

    EXPECT_THAT(GameRequests().at(0).recipients, ElementsAre("1", "2"));
    EXPECT_THAT(GameRequests().at(0).sentRecipients, IsEmpty());
    EXPECT_THAT(GameRequests().at(1).sentRecipients, ElementsAre("3"));
}

TEST_F(FacebookGameRequest, DialogKnowsItsContentAndItsDelegate) {
    FBSDKGameRequestContent* const content = Content();

    FBSDKGameRequestDialog* const dialog = Show(content);

    EXPECT_EQ([dialog content], content);
    EXPECT_EQ([dialog delegate], delegate.get());
    EXPECT_TRUE([dialog canShow]);
}

TEST_F(FacebookGameRequest, ADialogCanBeMadeFirstAndShownLater) {
    FBSDKGameRequestDialog* const dialog = [FBSDKGameRequestDialog dialogWithContent:Content() delegate:nil];
    EXPECT_THAT(GameRequests(), IsEmpty());
    [dialog setContent:ContentFor(@[ @"1" ])];
    [dialog setDelegate:delegate.get()];

    EXPECT_TRUE([dialog show]);

    EXPECT_THAT(GameRequests().at(0).recipients, ElementsAre("1"));
    AnswerGameRequest(GameRequestAnswer::Closed());
    EXPECT_THAT(Events(), ElementsAre("cancel"));
    EXPECT_EQ(delegate.get()->dialog, dialog);
}

TEST_F(FacebookGameRequest, ARefusedContentIsToldInsideShowAndOpensNothing) {
    FBSDKGameRequestContent* const content = ContentFor(@[ @"1" ]);
    [content setMessage:@""];

    FBSDKGameRequestDialog* const dialog = Show(content);

    EXPECT_THAT(Events(), ElementsAre("fail"));
    EXPECT_EQ(ErrorText(delegate.get()->error.get()), kRefused);
    EXPECT_EQ(delegate.get()->dialog, dialog);
    EXPECT_EQ(OpenGameRequestCount(), 0u);
    ASSERT_EQ(GameRequests().size(), 1u);
    EXPECT_EQ(GameRequests()[0].route, GameRequestRoute::kNone);
    EXPECT_THAT(GameRequests()[0].recipients, ElementsAre("1"));
    EXPECT_THAT(GameRequests()[0].sentRecipients, IsEmpty());
}

TEST_F(FacebookGameRequest, ARefusedContentIsToldOnTheCallingThread) {
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];
    std::thread::id caller;

    OnAnotherThread([&] {
        caller = std::this_thread::get_id();
        Show(content);
    });

    EXPECT_EQ(delegate.get()->thread, caller);
}

TEST_F(FacebookGameRequest, ShowOfARefusedContentIsNO) {
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];

    EXPECT_FALSE([[FBSDKGameRequestDialog dialogWithContent:content delegate:nil] show]);
    EXPECT_TRUE([[FBSDKGameRequestDialog dialogWithContent:Content() delegate:nil] show]);
}

TEST_F(FacebookGameRequest, WithNothingToShowFromOpensNowhereAndTellsNobody) {
    Host::SetGameRequestsCanShow(false);

    Show(ContentFor(@[ @"1" ]));

    EXPECT_EQ(OpenGameRequestCount(), 0u);
    EXPECT_FALSE(AnswerGameRequest(GameRequestAnswer::Closed()));
    EXPECT_THAT(Events(), IsEmpty());
    ASSERT_EQ(GameRequests().size(), 1u);
    EXPECT_EQ(GameRequests()[0].route, GameRequestRoute::kNone);
    EXPECT_THAT(GameRequests()[0].sentRecipients, IsEmpty());
}

TEST_F(FacebookGameRequest, WithNothingToShowFromARefusedContentIsStillTold) {
    Host::SetGameRequestsCanShow(false);
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];

    Show(content);

    EXPECT_THAT(Events(), ElementsAre("fail"));
}

TEST_F(FacebookGameRequest, CanShowAgain) {
    Host::SetGameRequestsCanShow(false);
    Host::SetGameRequestsCanShow(true);

    Show(Content());

    EXPECT_EQ(OpenGameRequestCount(), 1u);
}

using FacebookGameRequestDeathTest = FacebookGameRequest;

TEST_F(FacebookGameRequestDeathTest, WithoutContentEndsTheProcess) {
    FBSDKGameRequestDialog* const dialog = [FBSDKGameRequestDialog dialogWithContent:Content() delegate:nil];

    EXPECT_DEATH([FBSDKGameRequestDialog showWithContent:NoContent() delegate:nil],
                 "initWithContent:delegate:.*content");
    EXPECT_DEATH([dialog setContent:NoContent()], "setContent:.*content");
}

#pragma mark - Lifetimes

TEST_F(FacebookGameRequest, KeepsTheDialogAndItsContentUntilTheAnswerButNotTheDelegate) {
    const RetainPtr<FBSDKGameRequestContent*> content(Content());
    RetainPtr<FBSDKGameRequestDialog*> dialog;
    @autoreleasepool {
        dialog = RetainPtr(Show(content.get()));
    }
    EXPECT_EQ([dialog.get() retainCount], 2u);
    EXPECT_EQ([delegate.get() retainCount], 1u);

    AnswerGameRequest(GameRequestAnswer::Closed());

    EXPECT_EQ([dialog.get() retainCount], 1u);
}

TEST_F(FacebookGameRequest, DoesNotKeepARefusedDialog) {
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];
    RetainPtr<FBSDKGameRequestDialog*> dialog;
    @autoreleasepool {
        dialog = RetainPtr(Show(content));
    }

    EXPECT_EQ([dialog.get() retainCount], 1u);
}

TEST_F(FacebookGameRequest, ADelegateThatGivesItselfUpLivesUntilItsMethodReturns) {
    NSUInteger references = 0;
    VornGameRequestDelegate* const told = delegate.get();
    told->reaction = [&references, told, this] {
        delegate = {};
        references = [told retainCount];
    };
    Show(Content());

    AnswerGameRequest(GameRequestAnswer::Closed());

    EXPECT_EQ(references, 1u);
}

TEST_F(FacebookGameRequest, ADelegateThatGivesItselfUpInsideShowLivesUntilItsMethodReturns) {
    NSUInteger references = 0;
    VornGameRequestDelegate* const told = delegate.get();
    told->reaction = [&references, told, this] {
        delegate = {};
        references = [told retainCount];
    };
    FBSDKGameRequestContent* const content = Content();
    [content setMessage:@""];

    Show(content);

    EXPECT_EQ(references, 1u);
}

TEST_F(FacebookGameRequest, ADelegateMayShowTheNextDialog) {
    delegate.get()->reaction = [this] {
        delegate.get()->reaction = {};
        Show(Content());
    };
    Show(Content());

    AnswerGameRequest(GameRequestAnswer::Closed());

    EXPECT_EQ(OpenGameRequestCount(), 1u);
    EXPECT_THAT(Events(), ElementsAre("cancel"));
}

TEST_F(FacebookGameRequest, AnExceptionOfTheDelegatePassesThroughAndEndsTheDialog) {
    delegate.get()->reaction = [] { throw std::runtime_error("from the delegate"); };
    RetainPtr<FBSDKGameRequestDialog*> dialog;
    @autoreleasepool {
        dialog = RetainPtr(Show(Content()));
    }

    EXPECT_THROW(AnswerGameRequest(GameRequestAnswer::Closed()), std::runtime_error);

    EXPECT_EQ(OpenGameRequestCount(), 0u);
    EXPECT_EQ([dialog.get() retainCount], 1u);
    EXPECT_EQ([delegate.get() retainCount], 1u);
}

TEST_F(FacebookGameRequest, ResetForgetsTheDialogsAndTellsNobody) {
    RetainPtr<FBSDKGameRequestDialog*> dialog;
    @autoreleasepool {
        dialog = RetainPtr(Show(Content()));
    }
    Host::SetGameRequestsCanShow(false);

    Host::ResetPlatform();

    EXPECT_EQ([dialog.get() retainCount], 1u);
    EXPECT_EQ(OpenGameRequestCount(), 0u);
    EXPECT_THAT(GameRequests(), IsEmpty());
    EXPECT_THAT(Events(), IsEmpty());
    Show(Content());
    EXPECT_EQ(OpenGameRequestCount(), 1u);
}

#pragma mark - Answers in the browser

TEST_F(FacebookGameRequest, SentThroughTheBrowserListsTheRecipientsOneByOne) {
    EndWith(GameRequestAnswer::Sent(@"req", @[ @"1", @"2" ]));

    EXPECT_THAT(Events(), ElementsAre("complete"));
    EXPECT_THAT(Results(), ElementsAre("didComplete=number 1", "request=req", "to[0]=1", "to[1]=2"));
}

TEST_F(FacebookGameRequest, SentThroughTheBrowserToNobodyHasNoRecipients) {
    EndWith(GameRequestAnswer::Sent(@"req", nil));

    EXPECT_THAT(Results(), ElementsAre("didComplete=number 1", "request=req"));
}

TEST_F(FacebookGameRequest, SentThroughTheBrowserWithoutAnIDStillCompletes) {
    EndWith(GameRequestAnswer::Sent(nil, @[]));

    EXPECT_THAT(Events(), ElementsAre("complete"));
    EXPECT_THAT(Results(), ElementsAre("didComplete=number 1"));
}

TEST_F(FacebookGameRequest, CancelButtonOfThePageIsACompletion) {
    EndWith(GameRequestAnswer::CancelButton());

    EXPECT_THAT(Events(), ElementsAre("complete"));
    EXPECT_THAT(Results(), ElementsAre("completionGesture=cancel"));
}

TEST_F(FacebookGameRequest, ClosingThePageIsACancel) {
    EndWith(GameRequestAnswer::Closed());

    EXPECT_THAT(Events(), ElementsAre("cancel"));
}

TEST_F(FacebookGameRequest, AnErrorOfThePageTellsNobody) {
    EndWith(GameRequestAnswer::ErrorOfThePage());

    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(FacebookGameRequest, AnAnswerWithoutResultsIsShare203) {
    EndWith(GameRequestAnswer::WithoutResults());

    EXPECT_THAT(Events(), ElementsAre("fail"));
    EXPECT_EQ(ErrorText(delegate.get()->error.get()), "com.facebook.sdk.share 203");
}

#pragma mark - Answers of Facebook's app

class FacebookGamingRequest : public FacebookGameRequest {
protected:
    FacebookGamingRequest() { LogIn(@"gaming"); }
};

TEST_F(FacebookGamingRequest, SentListsTheRecipientsTogether) {
    EndWith(GameRequestAnswer::Sent(@"req", @[ @"1", @"2" ]));

    EXPECT_THAT(Events(), ElementsAre("complete"));
    EXPECT_THAT(Results(), ElementsAre("recipients=[1][2]", "request_id=req"));
}

TEST_F(FacebookGamingRequest, SentToNobodyHasNoListOfRecipients) {
    EndWith(GameRequestAnswer::Sent(@"req", @[]));
    EXPECT_THAT(Results(), ElementsAre("request_id=req"));

    EndWith(GameRequestAnswer::Sent(@"req", nil));
    EXPECT_THAT(Results(), ElementsAre("request_id=req"));
}

TEST_F(FacebookGamingRequest, SentWithoutAnIDIsACancel) {
    EndWith(GameRequestAnswer::Sent(nil, @[ @"1" ]));

    EXPECT_THAT(Events(), ElementsAre("cancel"));
}

TEST_F(FacebookGamingRequest, CancellingIsACancel) {
    EndWith(GameRequestAnswer::CancelButton());
    EndWith(GameRequestAnswer::Closed());

    EXPECT_THAT(Events(), ElementsAre("cancel", "cancel"));
}

TEST_F(FacebookGamingRequest, AnErrorTellsNobody) {
    EndWith(GameRequestAnswer::ErrorOfThePage());

    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(FacebookGamingRequest, IsAnsweredAsTheRouteWasAtItsShowing) {
    Show(Content());
    LogIn(@"facebook");

    AnswerGameRequest(GameRequestAnswer::Sent(@"req", nil));

    EXPECT_THAT(Results(), ElementsAre("request_id=req"));
}

#pragma mark - Answers as documented

// The parameter is the graph domain of the login.
class FacebookGameRequestAsDocumented : public FacebookGameRequest, public ::testing::WithParamInterface<const char*> {
protected:
    FacebookGameRequestAsDocumented() {
        Host::SetFacebookProfile(FacebookProfile::kAsDocumented);
        LogIn([NSString stringWithUTF8String:GetParam()]);
    }
};

INSTANTIATE_TEST_SUITE_P(All, FacebookGameRequestAsDocumented, ::testing::Values("facebook", "gaming"));

TEST_P(FacebookGameRequestAsDocumented, SentHasTheRequestAndAListOfRecipients) {
    EndWith(GameRequestAnswer::Sent(@"req", @[ @"1", @"2" ]));
    EXPECT_THAT(Results(), ElementsAre("request=req", "to=[1][2]"));

    EndWith(GameRequestAnswer::Sent(nil, nil));
    EXPECT_THAT(Results(), ElementsAre("to="));
    EXPECT_THAT(Events(), ElementsAre("complete", "complete"));
}

TEST_P(FacebookGameRequestAsDocumented, CancelButtonIsACancel) {
    EndWith(GameRequestAnswer::CancelButton());

    EXPECT_THAT(Events(), ElementsAre("cancel"));
}

TEST_P(FacebookGameRequestAsDocumented, AnErrorOfThePageIsCore14) {
    EndWith(GameRequestAnswer::ErrorOfThePage());

    EXPECT_THAT(Events(), ElementsAre("fail"));
    EXPECT_EQ(ErrorText(delegate.get()->error.get()), "com.facebook.sdk.core 14");
}

TEST_P(FacebookGameRequestAsDocumented, HoldsForDialogsShownFromThenOn) {
    Show(Content());
    Host::SetFacebookProfile(FacebookProfile::k18_1);

    AnswerGameRequest(GameRequestAnswer::ErrorOfThePage());
    EXPECT_THAT(Events(), ElementsAre("fail"));
    EndWith(GameRequestAnswer::ErrorOfThePage());
    EXPECT_THAT(Events(), ElementsAre("fail"));
}

#pragma mark - Answers of the caller's choice

TEST_F(FacebookGameRequest, CanEndWithAnyError) {
    NSError* const error = Host::MakeError(@"any", 7, nil);

    EndWith(GameRequestAnswer::Failed(error));

    EXPECT_THAT(Events(), ElementsAre("fail"));
    EXPECT_EQ(delegate.get()->error.get(), error);
}

TEST_F(FacebookGameRequest, CanCompleteWithAnyResults) {
    NSDictionary* const results = @{@"to" : @[]};

    EndWith(GameRequestAnswer::Completed(results));
    EXPECT_EQ(delegate.get()->results.get(), results);
    EndWith(GameRequestAnswer::Completed(nil));
    EXPECT_EQ(delegate.get()->results.get(), nil);

    EXPECT_THAT(Events(), ElementsAre("complete", "complete"));
}

TEST_F(FacebookGameRequest, WithoutADelegateEndsAllTheSame) {
    for (const GameRequestAnswer& answer :
         {GameRequestAnswer::Sent(@"req", nil), GameRequestAnswer::Closed(), GameRequestAnswer::WithoutResults()}) {
        [FBSDKGameRequestDialog showWithContent:Content() delegate:nil];

        EXPECT_TRUE(AnswerGameRequest(answer));
    }

    EXPECT_EQ(OpenGameRequestCount(), 0u);
}

TEST_F(FacebookGameRequest, WithoutAnOpenDialogThereIsNothingToAnswer) {
    EXPECT_FALSE(AnswerGameRequest(GameRequestAnswer::Closed()));
    Show(Content());
    EXPECT_FALSE(AnswerGameRequest(GameRequestAnswer::Closed(), 1));
    EXPECT_TRUE(AnswerGameRequest(GameRequestAnswer::Closed()));
    EXPECT_FALSE(AnswerGameRequest(GameRequestAnswer::Closed()));

    EXPECT_THAT(Events(), ElementsAre("cancel"));
}

TEST_F(FacebookGameRequest, DialogsAreCountedFromTheOneThatHasBeenOpenLongest) {
    FBSDKGameRequestDialog* const first = Show(Content());
    FBSDKGameRequestDialog* const second = Show(Content());
    FBSDKGameRequestDialog* const third = Show(Content());

    EXPECT_TRUE(AnswerGameRequest(GameRequestAnswer::Closed(), 1));
    EXPECT_EQ(delegate.get()->dialog, second);
    EXPECT_TRUE(AnswerGameRequest(GameRequestAnswer::Closed(), 1));
    EXPECT_EQ(delegate.get()->dialog, third);
    EXPECT_TRUE(AnswerGameRequest(GameRequestAnswer::Closed()));
    EXPECT_EQ(delegate.get()->dialog, first);
}

TEST_F(FacebookGameRequest, IsAnsweredOnTheThreadOfTheAnswer) {
    Show(Content());
    std::thread::id answering;

    OnAnotherThread([&] {
        answering = std::this_thread::get_id();
        AnswerGameRequest(GameRequestAnswer::Sent(@"req", @[]));
    });

    EXPECT_EQ(delegate.get()->thread, answering);
}

#pragma mark - Record

TEST_F(FacebookGameRequest, EveryShowIsRecordedOnceWithWhatItAsks) {
    FBSDKGameRequestContent* const content = ContentFor(@[ @"1", @"2" ]);
    FBSDKGameRequestContent* const refused = Content();
    [refused setMessage:@""];
    [refused setTitle:@""];
    [refused setFilters:FBSDKGameRequestFilterAppNonUsers];

    Show(content);
    OnAnotherThread([&] { [FBSDKGameRequestDialog showWithContent:refused delegate:nil]; });
    [[FBSDKGameRequestDialog dialogWithContent:content delegate:nil] show];
    AnswerGameRequest(GameRequestAnswer::Closed());

    const std::string show = "showWithContent:delegate:";
    EXPECT_THAT(
        Host::PlatformCalls::All(),
        ElementsAre(PlatformCall{"FBSDKGameRequestDialog", show,
                                 "{\"title\":\"Title\",\"message\":\"Message\",\"recipients\":[\"1\",\"2\"],"
                                 "\"filters\":0}, <VornGameRequestDelegate>",
                                 true},
                    PlatformCall{"FBSDKGameRequestDialog", show,
                                 "{\"title\":\"\",\"message\":\"\",\"recipients\":[],\"filters\":2}, nil", false},
                    PlatformCall{"FBSDKGameRequestDialog", "show", "", true}));
}

} // namespace
} // namespace Tarvik::Vorn::Test
