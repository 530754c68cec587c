// The bytes of the categories that the SDK keeps in FBSDKCoreKit_Basics. The categories themselves are not needed here.
#import <FBSDKCoreKit_Basics/FBSDKCoreKit_Basics.h>

FB_LINK_CATEGORY_IMPLEMENTATION(NSUserDefaults, DataPersisting)
FB_LINK_CATEGORY_IMPLEMENTATION(NSData, FileDataExtracting)
FB_LINK_CATEGORY_IMPLEMENTATION(NSFileManager, FileManaging)
FB_LINK_CATEGORY_IMPLEMENTATION(NSBundle, InfoDictionaryProviding)
FB_LINK_CATEGORY_IMPLEMENTATION(NSURLSessionTask, NetworkTask)
FB_LINK_CATEGORY_IMPLEMENTATION(NSURLSession, URLSessionProviding)
FB_LINK_CATEGORY_IMPLEMENTATION(NSNotificationCenter, NotificationDelivering)
