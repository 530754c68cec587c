// JSON text while it is written. Inside the core only.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

namespace Tarvik::Vorn {

// A buffer to whose end JSON is appended. It knows how a text is quoted, and nothing of objects and commas.
// Not for use by two threads at once.
class JsonText {
public:
    JsonText() = default;
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

    // Empties it and keeps its room.
    void Clear() { mSize = 0; }

    void Append(char character) {
        *Reserve(1) = character;
        mSize += 1;
    }

    void Append(int number);

    // Appends `text` as a JSON string: UTF-8, with only quotes, backslashes and control characters escaped, and U+FFFD in
    // place of every byte that is not part of a valid sequence.
    void AppendQuoted(std::string_view text);

    // Ends in NUL. Valid until something is appended.
    const char* c_str() {
        *Reserve(1) = '\0';
        return mData;
    }

private:
    // Where the next `size` characters go.
    char* Reserve(size_t size) {
        if (mCapacity - mSize < size) {
            Grow(size);
        }
        return mData + mSize;
    }

    __attribute__((noinline)) void Grow(size_t size);
    const char* AppendPlain(const char* text, const char* end);
    void Append(std::string_view text);
    void AppendEscaped(char character);
    const char* AppendUtf8(const char* text, const char* end);

    // Room for nearly every request, in one allocation with what holds it: small enough for the allocator's fast lists.
    std::array<char, 896> mUsual; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read.
    std::unique_ptr<char[]> mLarge;
    char* mData = mUsual.data();
    size_t mSize = 0;
    size_t mCapacity = mUsual.size();
};

} // namespace Tarvik::Vorn
