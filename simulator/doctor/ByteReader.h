// Reads numbers and texts from bytes that nobody vouches for. Plain C++.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {

struct ByteError {
    uint64_t offset = 0; // From the beginning of the file.
    std::string message; // Without the offset.
};

// Offsets count from the beginning of the stretch. A read outside of it fails: the first failure sticks, and from then
// on every function answers nothing or 0. Loops ask failed().
class ByteReader {
public:
    // `bytes` is borrowed. `start` is where in the file it begins, for errors.
    explicit ByteReader(std::string_view bytes, uint64_t start = 0) : mBytes(bytes), mStart(start) {}

    uint64_t size() const { return mBytes.size(); }
    bool failed() const { return mError.has_value(); }
    const std::optional<ByteError>& error() const { return mError; }

    void Fail(uint64_t offset, const std::string& message);

    std::string_view Part(uint64_t offset, uint64_t size);

    // Little-endian unless the name says otherwise.
    uint8_t U8(uint64_t offset);
    uint16_t U16(uint64_t offset);
    uint32_t U32(uint64_t offset);
    uint64_t U64(uint64_t offset);
    uint32_t BigEndian32(uint64_t offset);
    uint64_t BigEndian64(uint64_t offset);

    // A big-endian number of `size` bytes, 1 to 8.
    uint64_t BigEndian(uint64_t offset, uint64_t size);

    // The text that ends in a null byte.
    std::string_view Text(uint64_t offset);

    // A number of seven bits a byte; `offset` then stands behind it.
    uint64_t Uleb(uint64_t& offset);

    // The same with a sign.
    int64_t Sleb(uint64_t& offset);

private:
    uint64_t LittleEndian(uint64_t offset, uint64_t size);

    std::string_view mBytes;
    uint64_t mStart;
    std::optional<ByteError> mError;
};

} // namespace Tarvik::Vorn::Simulator::Doctor
