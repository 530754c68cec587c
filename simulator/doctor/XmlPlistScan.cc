#include "XmlPlistScan.h"

#include "FindingText.h"
#include "PlistFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr auto kContainers = std::to_array<std::string_view>({"plist", "dict", "array"});
constexpr auto kLeaves =
    std::to_array<std::string_view>({"key", "string", "integer", "real", "date", "data", "true", "false"});
constexpr auto kEntities = std::to_array<std::string_view>({"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"});

bool IsContainer(std::string_view name) {
    return std::ranges::find(kContainers, name) != kContainers.end();
}

bool IsLeaf(std::string_view name) {
    return std::ranges::find(kLeaves, name) != kLeaves.end();
}

struct OpenElement {
    std::string_view name;
    size_t at = 0;       // Where its tag begins.
    size_t children = 0; // In a dictionary keys count as well.
};

class XmlScan {
public:
    XmlScan(const std::string& path, std::string_view text) : mPath(path), mText(text) {}

    std::optional<LocatedError> Run() {
        if (mText.starts_with("\xEF\xBB\xBF")) { // Byte order mark.
            mAt = 3;
        }
        while (mAt < mText.size() && !mError) {
            if (mText[mAt] == '<') {
                ReadMarkup();
            } else {
                ReadText();
            }
        }
        if (!mError && !mOpen.empty()) {
            Fail(mOpen.back().at, "<" + std::string(mOpen.back().name) + "> is not closed",
                 "the file is cut off, or the closing tag was forgotten");
        }
        if (!mError && !mHasPlist) {
            Fail(mText.size(), "there is no <plist>", "write the file anew from Xcode");
        }
        return mError;
    }

private:
    void Fail(size_t at, const std::string& message, const std::string& remedy) {
        if (mError) {
            return;
        }
        const std::string_view before = mText.substr(0, at);
        const auto lines = static_cast<size_t>(std::ranges::count(before, '\n'));
        const size_t lineStart = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
        const auto characters = static_cast<size_t>(std::ranges::count_if(
            before.substr(lineStart), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
        mError = LocatedError{mPath, lines + 1, characters + 1, message, remedy};
    }

    bool InLeaf() const { return !mOpen.empty() && IsLeaf(mOpen.back().name); }

    // Goes on behind `ending`, which belongs to what begins here.
    void SkipBehind(std::string_view ending, const std::string& what) {
        const size_t found = mText.find(ending, mAt);
        if (found == std::string_view::npos) {
            return Fail(mAt, what + " does not end", "end it with " + std::string(ending));
        }
        mAt = found + ending.size();
    }

    void ReadText() {
        const size_t end = std::min(mText.find('<', mAt), mText.size());
        const std::string_view run = mText.substr(mAt, end - mAt);
        const size_t visible = run.find_first_not_of(kBlanks);
        if (visible != std::string_view::npos && !InLeaf()) {
            return Fail(mAt + visible, "text stands outside of a value", "texts belong into <string>, keys into <key>");
        }
        for (size_t at = run.find('&'); at != std::string_view::npos; at = run.find('&', at + 1)) {
            const std::string_view rest = run.substr(at);
            if (std::ranges::none_of(kEntities, [rest](std::string_view known) { return rest.starts_with(known); })) {
                return Fail(mAt + at, "& begins nothing that XML knows", "write &amp; for the character itself");
            }
        }
        mAt = end;
    }

    void ReadMarkup() {
        const std::string_view rest = mText.substr(mAt);
        if (rest.starts_with("<?")) {
            SkipBehind("?>", "the declaration");
        } else if (rest.starts_with("<!--")) {
            SkipBehind("-->", "the comment");
        } else if (rest.starts_with("<![CDATA[")) {
            if (!InLeaf()) {
                return Fail(mAt, "text stands outside of a value", "texts belong into <string>, keys into <key>");
            }
            SkipBehind("]]>", "the section");
        } else if (rest.starts_with("<!")) {
            const size_t at = mAt;
            SkipBehind(">", "the declaration");
            if (mText.substr(at, mAt - at).find('[') != std::string_view::npos) {
                Fail(at, "the declaration has a part of its own in [ ]", "property lists have none; leave it out");
            }
        } else {
            ReadTag();
        }
    }

    void ReadTag() {
        const size_t start = mAt;
        const size_t end = mText.find_first_of("<>", start + 1);
        if (end == std::string_view::npos || mText[end] == '<') {
            return Fail(start, "the tag does not end", "end it with >, and write &lt; for the character < itself");
        }
        std::string_view inside = mText.substr(start + 1, end - start - 1);
        mAt = end + 1;
        if (inside.starts_with('/')) {
            inside.remove_prefix(1);
            return Close(inside.substr(0, inside.find_first_of(kBlanks)), start);
        }
        const bool isEmpty = inside.ends_with('/');
        if (isEmpty) {
            inside.remove_suffix(1);
        }
        const std::string_view name = inside.substr(0, inside.find_first_of(kBlanks));
        Open(name, start);
        if (isEmpty) {
            Close(name, start);
        }
    }

    void Open(std::string_view name, size_t start) {
        const std::string tag = "<" + std::string(name.substr(0, 40)) + ">";
        if (!IsContainer(name) && !IsLeaf(name)) {
            return Fail(start, tag + " is no tag of a property list",
                        "use dict, array, string, integer, true or false");
        }
        if (InLeaf()) {
            return Fail(start, tag + " stands inside of <" + std::string(mOpen.back().name) + ">",
                        "close that tag before it");
        }
        if (mOpen.empty() != (name == "plist") || (mOpen.empty() && mHasPlist)) {
            return Fail(start, tag + " stands where it cannot", "a property list is one <plist> around one value");
        }
        if (mOpen.size() > kMaxPlistDepth) {
            return Fail(start, "more than " + std::to_string(kMaxPlistDepth) + " values are nested in one another",
                        "an Info.plist needs fewer than ten; write the file anew from Xcode");
        }
        mHasPlist = true;
        CountChild(name, start);
        mOpen.push_back({name, start, 0});
    }

    void CountChild(std::string_view name, size_t start) {
        if (mOpen.empty()) {
            return;
        }
        OpenElement& parent = mOpen.back();
        const bool needsKey = parent.name == "dict" && parent.children % 2 == 0;
        if (needsKey != (name == "key")) {
            return Fail(start,
                        needsKey ? "<" + std::string(name) + "> stands where a <key> belongs"
                                 : "a <key> stands where a value belongs",
                        "a dictionary is <key>, value, <key>, value");
        }
        if (parent.name == "plist" && parent.children != 0) {
            return Fail(start, "there is a second value", "a property list is one <plist> around one value");
        }
        parent.children += 1;
    }

    void Close(std::string_view name, size_t start) {
        if (mError) {
            return;
        }
        if (mOpen.empty() || mOpen.back().name != name) {
            const std::string wanted = mOpen.empty() ? "nothing" : "</" + std::string(mOpen.back().name) + ">";
            return Fail(start, "</" + std::string(name.substr(0, 40)) + "> closes what is not open",
                        wanted + " is expected here");
        }
        const OpenElement& closed = mOpen.back();
        if (name == "dict" && closed.children % 2 != 0) {
            return Fail(start, "the last <key> of the dictionary has no value", "add the value, or remove the key");
        }
        if (name == "plist" && closed.children == 0) {
            return Fail(start, "the property list is empty", "write the file anew from Xcode");
        }
        mOpen.pop_back();
    }

    const std::string& mPath;
    std::string_view mText;
    size_t mAt = 0;
    bool mHasPlist = false;
    std::vector<OpenElement> mOpen;
    std::optional<LocatedError> mError;
};

} // namespace

std::optional<LocatedError> ScanXmlPlist(const std::string& path, std::string_view text) {
    return XmlScan(path, text).Run();
}

} // namespace Tarvik::Vorn::Simulator::Doctor
