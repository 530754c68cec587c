// The records that the core and the plugin share in memory: texts, results and parameters.
//
// Plain C++, usable from a .cpp file. Field order and widths are a contract with a core that is compiled elsewhere;
// the assertions at the end of this file pin them. Records hold their fields in contract order and nothing more. They
// own their texts, are copied by value and know no thread: whoever holds one decides.
#pragma once

#include "VornExport.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <utility>

namespace Tarvik::Vorn {

class VornJsonWriter;

// A zero-filled array of `count` elements from calloc, to be given back with free.
// Throws std::bad_alloc when there is no memory.
template <class T>
[[nodiscard]] inline T* AllocateZeroed(size_t count) {
    void* memory = std::calloc(count, sizeof(T));
    if (memory == nullptr && count != 0) {
        throw std::bad_alloc();
    }
    return static_cast<T*>(memory);
}

// The core's text: a heap buffer that always ends in NUL, and its length without it.
//
// Every operation that takes a new buffer throws std::bad_alloc when there is none. After a failed assignment the text
// has no buffer, size() is 0 and toString() is empty; it can be assigned to and destroyed as usual.
class VORN_API String {
public:
    String() : mData(AllocateZeroed<char>(1)) {}

    // A copy of `text`; null counts as empty.
    // NOLINTNEXTLINE(google-explicit-constructor): texts become records' texts all over the plugin.
    String(const char* text) : String(text, text == nullptr ? 0 : std::strlen(text)) {}

    // A copy of `text`. From the first NUL inside `text` on, the buffer holds zeros; size() still counts them.
    // NOLINTNEXTLINE(google-explicit-constructor)
    String(const std::string& text) : String(text.c_str(), text.size()) {}

    // Kept: the length passes through 32 bits, so a text of 4 GiB or more keeps its length modulo 2^32. The core's own
    // copies do the same, and the two must agree on what a copied text holds.
    String(const String& other) : String(other.mData, static_cast<uint32_t>(other.mSize)) {}

    ~String() { Discard(); }

    // Kept: assigning null leaves the old buffer to whoever else still reads it; it is not freed. The core relies on it
    // for texts it has handed out. There is no test for a text assigned from its own buffer.
    String& operator=(const char* text) {
        if (text == nullptr) {
            mSize = 0;
            mData = nullptr;
            mData = AllocateZeroed<char>(1);
            return *this;
        }
        Discard();
        Adopt(text, std::strlen(text));
        return *this;
    }

    // All 64 bits of the length are copied, unlike in the copy constructor.
    String& operator=(const String& other) {
        if (&other == this) {
            return *this;
        }
        Discard();
        Adopt(other.mData, other.mSize);
        return *this;
    }

    // The buffer; valid until the next assignment or the end of this text. Null only after a failed assignment.
    const char* c_str() const { return mData; }

    // Number of characters without the final NUL.
    uint64_t size() const { return mSize; }

    bool empty() const { return mSize == 0; }

    // The text up to its first NUL; empty when there is no buffer.
    std::string toString() const { return mData == nullptr ? std::string() : std::string(mData); }

private:
    friend struct RecordLayout;

    String(const char* text, uint64_t size) { Adopt(text, size); }

    void Adopt(const char* text, uint64_t size) {
        mData = AllocateZeroed<char>(size + 1);
        mSize = size;
        if (text != nullptr) {
            std::strncpy(mData, text, size);
        }
        mData[size] = '\0';
    }

    void Discard() {
        std::free(mData);
        mData = nullptr;
        mSize = 0;
    }

    char* mData = nullptr;
    uint64_t mSize = 0;
};

// The core's array. `N` is the number of elements that a new array has room for; it doubles when it is full.
template <class T, uint32_t N>
class VORN_API Vector {
public:
    Vector() : Vector(N, Empty{}) {}

    // Kept: the copy has the source's capacity, all of it zero-filled, and its elements are assigned to, not
    // constructed: T's assignment must accept a target that is all zeros.
    Vector(const Vector& other) : Vector(other.mCapacity, Empty{}) {
        mSize = other.mSize;
        for (uint32_t i = 0; i < other.mSize; ++i) {
            mData[i] = other.mData[i];
        }
    }

    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): copying first makes it safe.
    Vector& operator=(const Vector& other) {
        Vector copy(other);
        Swap(copy);
        return *this;
    }

    ~Vector() {
        for (uint32_t i = 0; i < mSize; ++i) {
            mData[i].~T();
        }
        std::free(mData);
        mData = nullptr;
    }

    // Adds a copy of `element`. Pointers to elements are invalid afterwards. When the copy throws, the array is as before.
    void push_back(const T& element) {
        if (mSize < mCapacity) {
            Append(element);
            return;
        }
        Vector larger(mCapacity == 0 ? 1 : mCapacity * 2, Empty{});
        larger.mSize = mSize;
        for (uint32_t i = 0; i < mSize; ++i) {
            larger.mData[i] = mData[i];
        }
        larger.Append(element);
        Swap(larger);
    }

    uint32_t size() const { return mSize; }
    uint32_t capacity() const { return mCapacity; }
    bool empty() const { return mSize == 0; }

    // REQUIRES: index < size().
    T& operator[](uint32_t index) { return mData[index]; }
    const T& operator[](uint32_t index) const { return mData[index]; }

    const T* begin() const { return mData; }
    const T* end() const { return mData + mSize; }

private:
    friend struct RecordLayout;
    struct Empty {};

    // The other constructors delegate here, so that their failure runs the destructor.
    Vector(uint32_t capacity, Empty) : mCapacity(capacity), mData(AllocateZeroed<T>(capacity)) {}

    // REQUIRES: there is room. What a failed assignment has taken is given back.
    void Append(const T& element) {
        T& target = mData[mSize];
        try {
            target = element;
        } catch (...) {
            target.~T();
            std::memset(static_cast<void*>(&target), 0, sizeof(T));
            throw;
        }
        mSize += 1;
    }

    void Swap(Vector& other) {
        std::swap(mSize, other.mSize);
        std::swap(mCapacity, other.mCapacity);
        std::swap(mData, other.mData);
    }

    uint32_t mSize = 0;
    uint32_t mCapacity = 0;
    T* mData = nullptr;
};

// The result of an operation. The constructors are the core's: they fill `retMsg` with the standard text of the code.
struct VORN_API InnerBaseRet {
    InnerBaseRet();
    explicit InnerBaseRet(int retCode);
    InnerBaseRet(int retCode, int thirdCode, String thirdMsg);
    InnerBaseRet(const InnerBaseRet& other) = default;
    InnerBaseRet(InnerBaseRet&& other) = default;
    InnerBaseRet& operator=(const InnerBaseRet& other) = default;
    ~InnerBaseRet() = default;

    int32_t methodNameID; // The request's method ID.
    int32_t retCode;      // One of RetCode.
    String retMsg;        // Standard text of `retCode`.
    int32_t thirdCode;    // The Facebook error's code, narrowed to 32 bits, or a copy of `retCode`.
    String thirdMsg;      // The Facebook error's text, or the plugin's explanation.
    String extraJson;     // JSON text with extra data.
};

// One friend. The plugin copies and destroys these and looks at no member.
struct VORN_API InnerPersonInfo {
    String coreText1;
    String coreText2;
    int32_t coreNumber3 = 0;
    String coreText4;
    String coreText5;
    String coreText6;
    String coreText7;
    String coreText8;
};

// The result of a friend query. The constructor is the core's.
struct VORN_API InnerFriendRet : InnerBaseRet {
    explicit InnerFriendRet(int retCode);
    InnerFriendRet(const InnerFriendRet& other) = default;
    InnerFriendRet(InnerFriendRet&& other) = default;
    InnerFriendRet& operator=(const InnerFriendRet& other) = default;
    ~InnerFriendRet() = default;

    Vector<InnerPersonInfo, 16> friendInfoList;
    String extraText; // Not written by the plugin.
};

// The result of a login that failed or was cancelled. Members named `core...` are the core's to fill; the number is
// their place in the record.
struct VORN_API InnerLoginRet : InnerBaseRet {
    String coreText7;
    String coreText8;
    int64_t coreNumber9 = 0;
    int32_t coreNumber10 = 0;
    String coreText11;
    String coreText12;
    int32_t coreNumber13 = 0;
    String coreText14;
    String coreText15;
    String coreText16;
    String coreText17;
    bool coreFlag18 = false;
    int32_t channelID = 0; // 4 for Facebook.
    String channel;        // "Facebook".
    String coreText21;
    String coreText22;
    int64_t coreNumber23 = 0;
    String coreText24;
    String coreText25;
    String coreText26;
    String coreText27;
};

// The login plugin's answer to a successful login. The default constructor is the core's.
struct VORN_API InnerLoginPluginRet {
    InnerLoginPluginRet();
    InnerLoginPluginRet(const InnerLoginPluginRet& other) = default;
    InnerLoginPluginRet(InnerLoginPluginRet&& other) = default;
    InnerLoginPluginRet& operator=(const InnerLoginPluginRet& other) = default;
    InnerLoginPluginRet& operator=(InnerLoginPluginRet&& other) = default;
    ~InnerLoginPluginRet() = default;

    int32_t methodNameID;
    int32_t channelID;       // 4 for Facebook.
    std::string channel;     // "Facebook".
    std::string channelInfo; // JSON text with the member "access_token".
    std::string coreText5;
    std::string coreText6;
    std::string coreText7;
};

// A request to share, send, invite or add a friend. All texts are UTF-8.
struct VORN_API VornFriendReqInfo {
    int32_t type = 0; // One of RequestType.
    String user;
    String title;
    String desc;
    String imagePath;
    String thumbPath;
    String mediaPath;
    String link;
    String extraJson; // JSON text with extra options.

    // Writes the members into the object that is open in `writer`. Defined in VornServices.h.
    void struct2Json(VornJsonWriter& writer, const char* key) const;
};

// Parameters of every call into a plugin.
struct VORN_API VornBaseParams {
    int32_t methodID = 0;
    std::string seqID;      // Names the request in logs, traces and results.
    std::string channel;    // Not read by the plugin.
    std::string subChannel; // Login mode of this request: "Game" or anything else.
    std::string extraJson;  // JSON text with extra options.
};

struct VORN_API VornLoginParams : VornBaseParams {
    std::string permissions; // Comma-separated; not trimmed.
};

// A result that waits for its delivery.
template <class T>
struct VORN_API VornCallBackParams {
    // NOLINTNEXTLINE(performance-unnecessary-value-param): the core calls it with the text by value.
    VornCallBackParams(const T& ret, uint32_t observerID, String seqID)
        : mRet(ret), mObserverID(observerID), mSeqID(seqID) {}

    T mRet;
    uint32_t mObserverID;
    String mSeqID;
};

// Layout assertions. The records are laid out alike on every 64-bit target, so they are checked in every build.
struct RecordLayout {
    template <class T, uint32_t N>
    static constexpr bool HoldsVector() {
        using V = Vector<T, N>;
        return offsetof(V, mSize) == 0 && offsetof(V, mCapacity) == 4 && offsetof(V, mData) == 8 && sizeof(V) == 16;
    }
    static_assert(offsetof(String, mData) == 0 && offsetof(String, mSize) == 8 && sizeof(String) == 16);
};
static_assert(RecordLayout::HoldsVector<InnerPersonInfo, 16>());
static_assert(sizeof(std::string) == 24, "the core's std::string is libc++'s");

#pragma clang diagnostic push
// Every compiler that builds either side lays a derived record out behind its base as expected here.
#pragma clang diagnostic ignored "-Winvalid-offsetof"

static_assert(offsetof(InnerBaseRet, methodNameID) == 0 && offsetof(InnerBaseRet, retCode) == 4);
static_assert(offsetof(InnerBaseRet, retMsg) == 8 && offsetof(InnerBaseRet, thirdCode) == 24);
static_assert(offsetof(InnerBaseRet, thirdMsg) == 32 && offsetof(InnerBaseRet, extraJson) == 48);
static_assert(sizeof(InnerBaseRet) == 64);

static_assert(offsetof(InnerPersonInfo, coreText1) == 0 && offsetof(InnerPersonInfo, coreText2) == 16);
static_assert(offsetof(InnerPersonInfo, coreNumber3) == 32 && offsetof(InnerPersonInfo, coreText4) == 40);
static_assert(offsetof(InnerPersonInfo, coreText5) == 56 && offsetof(InnerPersonInfo, coreText6) == 72);
static_assert(offsetof(InnerPersonInfo, coreText7) == 88 && offsetof(InnerPersonInfo, coreText8) == 104);
static_assert(sizeof(InnerPersonInfo) == 120);

static_assert(offsetof(InnerFriendRet, friendInfoList) == 64 && offsetof(InnerFriendRet, extraText) == 80);
static_assert(sizeof(InnerFriendRet) == 96);

static_assert(offsetof(InnerLoginRet, coreText7) == 64 && offsetof(InnerLoginRet, coreText8) == 80);
static_assert(offsetof(InnerLoginRet, coreNumber9) == 96 && offsetof(InnerLoginRet, coreNumber10) == 104);
static_assert(offsetof(InnerLoginRet, coreText11) == 112 && offsetof(InnerLoginRet, coreText12) == 128);
static_assert(offsetof(InnerLoginRet, coreNumber13) == 144 && offsetof(InnerLoginRet, coreText14) == 152);
static_assert(offsetof(InnerLoginRet, coreText15) == 168 && offsetof(InnerLoginRet, coreText16) == 184);
static_assert(offsetof(InnerLoginRet, coreText17) == 200 && offsetof(InnerLoginRet, coreFlag18) == 216);
static_assert(offsetof(InnerLoginRet, channelID) == 220 && offsetof(InnerLoginRet, channel) == 224);
static_assert(offsetof(InnerLoginRet, coreText21) == 240 && offsetof(InnerLoginRet, coreText22) == 256);
static_assert(offsetof(InnerLoginRet, coreNumber23) == 272 && offsetof(InnerLoginRet, coreText24) == 280);
static_assert(offsetof(InnerLoginRet, coreText25) == 296 && offsetof(InnerLoginRet, coreText26) == 312);
static_assert(offsetof(InnerLoginRet, coreText27) == 328 && sizeof(InnerLoginRet) == 344);

static_assert(offsetof(InnerLoginPluginRet, methodNameID) == 0 && offsetof(InnerLoginPluginRet, channelID) == 4);
static_assert(offsetof(InnerLoginPluginRet, channel) == 8 && offsetof(InnerLoginPluginRet, channelInfo) == 32);
static_assert(offsetof(InnerLoginPluginRet, coreText5) == 56 && offsetof(InnerLoginPluginRet, coreText6) == 80);
static_assert(offsetof(InnerLoginPluginRet, coreText7) == 104 && sizeof(InnerLoginPluginRet) == 128);

static_assert(offsetof(VornFriendReqInfo, type) == 0 && offsetof(VornFriendReqInfo, user) == 8);
static_assert(offsetof(VornFriendReqInfo, title) == 24 && offsetof(VornFriendReqInfo, desc) == 40);
static_assert(offsetof(VornFriendReqInfo, imagePath) == 56 && offsetof(VornFriendReqInfo, thumbPath) == 72);
static_assert(offsetof(VornFriendReqInfo, mediaPath) == 88 && offsetof(VornFriendReqInfo, link) == 104);
static_assert(offsetof(VornFriendReqInfo, extraJson) == 120 && sizeof(VornFriendReqInfo) == 136);

static_assert(offsetof(VornBaseParams, methodID) == 0 && offsetof(VornBaseParams, seqID) == 8);
static_assert(offsetof(VornBaseParams, channel) == 32 && offsetof(VornBaseParams, subChannel) == 56);
static_assert(offsetof(VornBaseParams, extraJson) == 80 && sizeof(VornBaseParams) == 104);
static_assert(offsetof(VornLoginParams, permissions) == 104 && sizeof(VornLoginParams) == 128);

static_assert(offsetof(VornCallBackParams<InnerBaseRet>, mRet) == 0);
static_assert(offsetof(VornCallBackParams<InnerBaseRet>, mObserverID) == 64);
static_assert(offsetof(VornCallBackParams<InnerBaseRet>, mSeqID) == 72);
static_assert(sizeof(VornCallBackParams<InnerBaseRet>) == 88);
static_assert(offsetof(VornCallBackParams<InnerFriendRet>, mObserverID) == 96);
static_assert(offsetof(VornCallBackParams<InnerFriendRet>, mSeqID) == 104);
static_assert(offsetof(VornCallBackParams<InnerLoginRet>, mObserverID) == 344);
static_assert(offsetof(VornCallBackParams<InnerLoginRet>, mSeqID) == 352);
static_assert(offsetof(VornCallBackParams<InnerLoginPluginRet>, mObserverID) == 128);
static_assert(offsetof(VornCallBackParams<InnerLoginPluginRet>, mSeqID) == 136);

#pragma clang diagnostic pop

} // namespace Tarvik::Vorn
