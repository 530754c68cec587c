// The friend plugin as tests send to it: what the core may call, and the plugin's own properties.
#pragma once

#include "VornProtocols.h"

#import <Foundation/Foundation.h>

@protocol VornFriendProperties <NSObject>

@property(nonatomic) int methodNameID;
@property(nonatomic, retain) NSString* seqID;
@property(nonatomic) unsigned int observerID;

@end

namespace Tarvik::Vorn::Test {

using FriendPlugin = id<VornFriendDelegate, VornFriendProperties>;

} // namespace Tarvik::Vorn::Test
