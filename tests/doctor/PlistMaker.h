// Makes property lists for the doctor: the Info.plist of a game in order, with single keys changed. Values are XML.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// A key and its value in XML, such as {"FacebookAppID", "<string>1</string>"}.
using PlistMembers = std::map<std::string, std::string>;

// Nothing is wrong with a game that has these, not even a note.
PlistMembers GoodMembers();

// GoodMembers with one key set to another value, or without one.
PlistMembers With(const std::string& key, const std::string& value);
PlistMembers Without(const std::string& key);

std::string TextValue(const std::string& text);
std::string ArrayValue(const std::vector<std::string>& texts);

// The value of CFBundleURLTypes with these schemes in one entry.
std::string URLTypesValue(const std::vector<std::string>& schemes);

// The whole XML property list.
std::string XmlPlist(const PlistMembers& members);

// The same as a binary property list.
std::string BinaryPlist(const PlistMembers& members);

} // namespace Tarvik::Vorn::Test
