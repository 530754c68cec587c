#include "VornServices.h"
#include "VornUtf8.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What the text looks like: no blanks; UTF-8, only quotes, backslashes and control characters escaped ("/" is not);
// invalid UTF-8 replaced by U+FFFD, so that the text is valid JSON whatever it was given.
//
// What happens to calls in an unexpected order: nothing crashes, and the text stays the beginning of one JSON object.
// - A member outside every object is dropped, and so is an end without a beginning.
// - An object that begins outside every object begins the text anew; StartJsonConvert does so even inside one.
// - EndJsonConvert ends every object that is still open.
// - A nested object without a name has the name "". The last of several names in a row counts, and a member's own name
//   counts more than one set before it.

namespace Tarvik::Vorn {
namespace {

// Whether the character stands in JSON as it is. Without a branch, so that the compiler can look at several at a time.
constexpr bool IsPlain(char character) {
    const auto code = static_cast<unsigned char>(character);
    return (code >= 0x20) & (code < 0x7f) & (code != '"') & (code != '\\');
}

// Whether `text` is ASCII without quotes, backslashes and control characters. Most is looked at by sixteens.
bool IsPlain(std::string_view text) {
    constexpr size_t kStep = 16;
    for (; text.size() >= kStep; text.remove_prefix(kStep)) {
        unsigned char plain = 1;
        for (size_t i = 0; i < kStep; ++i) {
            plain &= static_cast<unsigned char>(IsPlain(text[i]));
        }
        if (plain == 0) {
            return false;
        }
    }
    return std::all_of(text.begin(), text.end(), [](char character) { return IsPlain(character); });
}

// RapidJSON's writer with a short way for texts that stand in JSON as they are: most of what a log line shows of a request is
// of that kind, and RapidJSON looks at each character by itself.
class TextWriter : public rapidjson::Writer<rapidjson::StringBuffer> {
public:
    using rapidjson::Writer<rapidjson::StringBuffer>::Writer;

    // Writes a value or a name, which to the writer are the same.
    void Text(std::string_view text) {
        if (!IsPlain(text)) {
            WriteValid(text);
            return;
        }
        Prefix(rapidjson::kStringType);
        char* const written = os_->Push(text.size() + 2);
        written[0] = '"';
        std::copy(text.begin(), text.end(), written + 1); // Nothing for null, which memcpy must not be given.
        written[text.size() + 1] = '"';
    }

private:
    void WriteValid(std::string_view text) {
        if (ValidUtf8Length(text) == text.size()) {
            String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
            return;
        }
        const std::string valid = ReplaceInvalidUtf8(text);
        String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    }
};

// Room for the texts of most requests: the buffer need not grow, which copies it.
constexpr size_t kUsualSize = 1024;

class WriterState {
public:
    WriterState() : mWriter(mBuffer, &mAllocator) {}

    // Begins the document anew, without any open object.
    void Restart() {
        mBuffer.Clear();
        mWriter.Reset(mBuffer);
        mDepth = 0;
        mName.reset();
    }

    void SetName(const char* name) { mName = OrEmpty(name); }

    void BeginObject() {
        if (mDepth == 0) {
            Restart();
        } else {
            mWriter.Text(mName.value_or(""));
            mName.reset();
        }
        mWriter.StartObject();
        mDepth += 1;
    }

    void EndObject() {
        if (mDepth == 0) {
            return;
        }
        mName.reset();
        mWriter.EndObject();
        mDepth -= 1;
    }

    void EndDocument() {
        while (mDepth != 0) {
            EndObject();
        }
    }

    void WriteMember(const char* name, int value) {
        if (BeginMember(name)) {
            mWriter.Int(value);
        }
    }

    void WriteMember(const char* name, const char* value) {
        if (BeginMember(name)) {
            mWriter.Text(OrEmpty(value));
        }
    }

    // Without a NUL in it: the writer escapes them.
    const char* Text() const { return mBuffer.GetString(); }

private:
    bool BeginMember(const char* name) {
        if (mDepth == 0) {
            return false;
        }
        mName.reset();
        mWriter.Text(OrEmpty(name));
        return true;
    }

    rapidjson::CrtAllocator mAllocator; // Of both; each would make one of its own.
    rapidjson::StringBuffer mBuffer{&mAllocator, kUsualSize};
    TextWriter mWriter;
    size_t mDepth = 0;                // Open objects.
    std::optional<std::string> mName; // For the next nested object.
};

WriterState& StateOf(void* state) {
    return *static_cast<WriterState*>(state);
}

} // namespace

VornJsonWriter::VornJsonWriter() : mState(new WriterState) {}

VornJsonWriter::~VornJsonWriter() {
    delete &StateOf(mState);
}

void VornJsonWriter::StartJsonConvert() {
    StateOf(mState).Restart();
    StateOf(mState).BeginObject();
}

void VornJsonWriter::EndJsonConvert() {
    StateOf(mState).EndDocument();
}

void VornJsonWriter::objectBegin() {
    StateOf(mState).BeginObject();
}

void VornJsonWriter::objectEnd() {
    StateOf(mState).EndObject();
}

void VornJsonWriter::setKey(const char* key) {
    StateOf(mState).SetName(key);
}

void VornJsonWriter::convert(const char* key, int value) {
    StateOf(mState).WriteMember(key, value);
}

// The flag has no meaning for this core.
void VornJsonWriter::convert(const char* key, const char* value, int /*flag*/) {
    StateOf(mState).WriteMember(key, value);
}

void VornJsonWriter::convert(const char* key, const String& value, int /*flag*/) {
    StateOf(mState).WriteMember(key, value.c_str());
}

String VornJsonWriter::GetJsonString() {
    return String(StateOf(mState).Text());
}

} // namespace Tarvik::Vorn
