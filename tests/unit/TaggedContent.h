// What tests of tagging need: a share content that keeps what it is given, and the plugin's method that tags.
#pragma once

#include "VornRecords.h"

#import <Foundation/Foundation.h>

#include <string>

// A share content as far as tagging sees it.
@interface VornTaggedContent : NSObject {
@public
    int calls;
    NSArray* peopleIDs;
}
- (void)setPeopleIDs:(NSArray*)IDs;
@end

// The plugin's own method, which the content builder calls.
@protocol VornTagging
- (void)setShareTaggablePeople:(id)content
                       reqInfo:(const Tarvik::Vorn::VornFriendReqInfo*)reqInfo
                         seqID:(std::string)seqID;
@end
