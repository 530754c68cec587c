// A text as RapidJSON reads it. Inside the core only.
#pragma once

#include <cstddef>
#include <string_view>

namespace Tarvik::Vorn {

// RapidJSON's own streams go by the NUL at the end of a text, and a UTF-8 sequence that is cut short leads them past
// it. This one ends where the text ends: from there on it yields NUL and stands still. Because RapidJSON makes no local
// copy of a stream it does not know, Tell() is right in every callback of a reader.
class TextStream {
public:
    using Ch = char;

    // `text` must outlive the stream.
    explicit TextStream(std::string_view text) : mText(text) {}

    Ch Peek() const { return mPosition < mText.size() ? mText[mPosition] : '\0'; }

    Ch Take() {
        const Ch taken = Peek();
        if (mPosition < mText.size()) {
            mPosition += 1;
        }
        return taken;
    }

    size_t Tell() const { return mPosition; }

    // The writing half of RapidJSON's idea of a stream. The calls are compiled, but none is made.
    Ch* PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    size_t PutEnd(Ch*) { return 0; }

private:
    std::string_view mText;
    size_t mPosition = 0;
};

} // namespace Tarvik::Vorn
