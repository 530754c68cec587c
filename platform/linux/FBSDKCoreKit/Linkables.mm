// The bytes of the categories that the SDK keeps in FBSDKCoreKit. The categories themselves are not needed here.
#import <FBSDKCoreKit/FBSDKCoreKit.h>

FB_LINK_CATEGORY_IMPLEMENTATION(NSNotificationCenter, NotificationPosting)
FB_LINK_CATEGORY_IMPLEMENTATION(NSProcessInfo, MacCatalystDetermining)
FB_LINK_CATEGORY_IMPLEMENTATION(NSProcessInfo, OperatingSystemVersionComparing)
