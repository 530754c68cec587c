// The categories of the Facebook SDK that a binary is tied to by its link words, in the order of the SDK's headers. A word is
// called FBLink_ and its symbol FBLinkable_ before the name.
#pragma once

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

inline const std::vector<std::string>& LinkNames() {
    static const std::vector<std::string> names = {
        "NSUserDefaults_DataPersisting",
        "NSData_FileDataExtracting",
        "NSFileManager_FileManaging",
        "NSBundle_InfoDictionaryProviding",
        "NSURLSessionTask_NetworkTask",
        "NSURLSession_URLSessionProviding",
        "NSNotificationCenter_NotificationDelivering",
        "NSNotificationCenter_NotificationPosting",
        "NSProcessInfo_MacCatalystDetermining",
        "NSProcessInfo_OperatingSystemVersionComparing",
    };
    return names;
}

} // namespace Tarvik::Vorn::Test
