// Small texts of findings. Plain C++, any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

// "a, b and c".
std::string Listed(const std::vector<std::string>& names);

// The text in quotes; cut with "..." when it is longer than a line.
std::string Quoted(std::string_view text);

// Valid UTF-8 that a terminal shows and does not obey: U+FFFD stands for control characters and for
// every byte that is not part of a valid sequence.
std::string Printable(std::string_view text);

// The text as it stands between tags of XML.
std::string XmlText(std::string_view text);

// Lines of a property list: a key with a text, and a key with an array of texts.
std::string PlistTextEntry(std::string_view key, std::string_view value);
std::string PlistArrayEntry(std::string_view key, const std::vector<std::string>& values);

// The entry CFBundleURLTypes with one URL scheme.
std::string PlistURLTypes(std::string_view scheme);

// 0x20.
std::string Hexadecimal(unsigned long long number);

} // namespace Tarvik::Vorn::Simulator::Doctor
