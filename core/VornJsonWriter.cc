#include "VornJsonText.h"
#include "VornServices.h"
#include "VornUtf8.h"

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

class WriterState {
public:
    // Begins the document anew, without any open object.
    void Restart() {
        mText.Clear();
        mDepth = 0;
        mName.reset();
    }

    void SetName(const char* name) { mName = OrEmpty(name); }

    void BeginObject() {
        if (mDepth == 0) {
            Restart();
        } else {
            WriteName(mName ? std::string_view(*mName) : std::string_view());
            mName.reset();
        }
        mText.Append('{');
        mIsFirst = true;
        mDepth += 1;
    }

    void EndObject() {
        if (mDepth == 0) {
            return;
        }
        mName.reset();
        mText.Append('}');
        mIsFirst = false; // Whatever follows stands behind this object.
        mDepth -= 1;
    }

    void EndDocument() {
        while (mDepth != 0) {
            EndObject();
        }
    }

    void WriteMember(const char* name, int value) {
        if (BeginMember(name)) {
            mText.Append(value);
        }
    }

    void WriteMember(const char* name, const char* value) {
        if (BeginMember(name)) {
            mText.AppendQuoted(OrEmpty(value));
        }
    }

    // Without a NUL in it: they are escaped.
    const char* Text() { return mText.c_str(); }

private:
    bool BeginMember(const char* name) {
        if (mDepth == 0) {
            return false;
        }
        mName.reset();
        WriteName(OrEmpty(name));
        return true;
    }

    void WriteName(std::string_view name) {
        if (!mIsFirst) {
            mText.Append(',');
        }
        mIsFirst = false;
        mText.AppendQuoted(name);
        mText.Append(':');
    }

    JsonText mText;
    size_t mDepth = 0;                // Open objects.
    bool mIsFirst = true;             // Whether the open object has no member yet.
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
