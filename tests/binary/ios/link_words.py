"""The words that tie the library to the categories of the Facebook SDK, in the order of the SDK's headers, with the
library that each comes from."""

_BASICS = "@rpath/FBSDKCoreKit_Basics.framework/FBSDKCoreKit_Basics"
_CORE = "@rpath/FBSDKCoreKit.framework/FBSDKCoreKit"

WORDS = [
    ("NSUserDefaults_DataPersisting", _BASICS),
    ("NSData_FileDataExtracting", _BASICS),
    ("NSFileManager_FileManaging", _BASICS),
    ("NSBundle_InfoDictionaryProviding", _BASICS),
    ("NSURLSessionTask_NetworkTask", _BASICS),
    ("NSURLSession_URLSessionProviding", _BASICS),
    ("NSNotificationCenter_NotificationDelivering", _BASICS),
    ("NSNotificationCenter_NotificationPosting", _CORE),
    ("NSProcessInfo_MacCatalystDetermining", _CORE),
    ("NSProcessInfo_OperatingSystemVersionComparing", _CORE),
]
