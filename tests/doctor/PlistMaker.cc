#include "PlistMaker.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>

namespace Tarvik::Vorn::Test {

PlistMembers GoodMembers() {
    return {
        {"CFBundleExecutable", TextValue("Game")},
        {"CFBundlePackageType", TextValue("APPL")},
        {"CFBundleURLTypes", URLTypesValue({"fb123456"})},
        {"FacebookAppID", TextValue("123456")},
        {"FacebookClientToken", TextValue("0123456789abcdef")},
        {"FacebookDisplayName", TextValue("Game")},
        {"LSApplicationQueriesSchemes", ArrayValue({"fbapi", "fb-messenger-share-api", "fbauth2"})},
        {"MinimumOSVersion", TextValue("13.0")},
        {"NSPhotoLibraryAddUsageDescription", TextValue("Videos are saved.")},
        {"NSPhotoLibraryUsageDescription", TextValue("Videos are saved.")},
        {"NSUserTrackingUsageDescription", TextValue("Advertisements.")},
    };
}

PlistMembers With(const std::string& key, const std::string& value) {
    PlistMembers members = GoodMembers();
    members[key] = value;
    return members;
}

PlistMembers Without(const std::string& key) {
    PlistMembers members = GoodMembers();
    members.erase(key);
    return members;
}

std::string TextValue(const std::string& text) {
    return "<string>" + text + "</string>";
}

std::string ArrayValue(const std::vector<std::string>& texts) {
    std::string value = "<array>";
    for (const std::string& text : texts) {
        value += TextValue(text);
    }
    return value + "</array>";
}

std::string URLTypesValue(const std::vector<std::string>& schemes) {
    return "<array><dict><key>CFBundleURLSchemes</key>" + ArrayValue(schemes) + "</dict></array>";
}

std::string XmlPlist(const PlistMembers& members) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                      "<plist version=\"1.0\">\n<dict>\n";
    for (const auto& [key, value] : members) {
        xml += "<key>" + key + "</key>\n" + value + "\n";
    }
    return xml + "</dict>\n</plist>\n";
}

std::string BinaryPlist(const PlistMembers& members) {
    const std::string xml = XmlPlist(members);
    plist_t root = nullptr;
    plist_from_xml(xml.data(), static_cast<uint32_t>(xml.size()), &root);
    char* bytes = nullptr;
    uint32_t size = 0;
    plist_to_bin(root, &bytes, &size);
    plist_free(root);
    std::string binary(bytes, size);
    std::free(bytes);
    return binary;
}

} // namespace Tarvik::Vorn::Test
