#include "ByteReader.h"

namespace Tarvik::Vorn::Simulator::Doctor {

void ByteReader::Fail(uint64_t offset, const std::string& message) {
    if (!mError) {
        mError = ByteError{mStart + offset, message};
    }
}

std::string_view ByteReader::Part(uint64_t offset, uint64_t size) {
    if (failed()) {
        return {};
    }
    if (offset > mBytes.size() || size > mBytes.size() - offset) {
        Fail(offset, std::to_string(size) + " bytes are expected, which are outside of the " +
                         std::to_string(mBytes.size()) + " that are there");
        return {};
    }
    return mBytes.substr(offset, size);
}

uint64_t ByteReader::LittleEndian(uint64_t offset, uint64_t size) {
    const std::string_view part = Part(offset, size);
    uint64_t number = 0;
    for (size_t index = part.size(); index > 0; --index) {
        number = number << 8U | static_cast<unsigned char>(part[index - 1]);
    }
    return number;
}

uint64_t ByteReader::BigEndian(uint64_t offset, uint64_t size) {
    uint64_t number = 0;
    for (const char byte : Part(offset, size)) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

uint8_t ByteReader::U8(uint64_t offset) {
    return static_cast<uint8_t>(LittleEndian(offset, 1));
}

uint16_t ByteReader::U16(uint64_t offset) {
    return static_cast<uint16_t>(LittleEndian(offset, 2));
}

uint32_t ByteReader::U32(uint64_t offset) {
    return static_cast<uint32_t>(LittleEndian(offset, 4));
}

uint64_t ByteReader::U64(uint64_t offset) {
    return LittleEndian(offset, 8);
}

uint32_t ByteReader::BigEndian32(uint64_t offset) {
    return static_cast<uint32_t>(BigEndian(offset, 4));
}

uint64_t ByteReader::BigEndian64(uint64_t offset) {
    return BigEndian(offset, 8);
}

std::string_view ByteReader::Text(uint64_t offset) {
    if (failed()) {
        return {};
    }
    if (offset >= mBytes.size()) {
        Fail(offset,
             "a text is expected, which is outside of the " + std::to_string(mBytes.size()) + " bytes that are there");
        return {};
    }
    const size_t end = mBytes.find('\0', offset);
    if (end == std::string_view::npos) {
        Fail(offset, "the text does not end");
        return {};
    }
    return mBytes.substr(offset, end - offset);
}

uint64_t ByteReader::Uleb(uint64_t& offset) {
    uint64_t number = 0;
    for (unsigned shift = 0; !failed(); shift += 7) {
        const uint8_t byte = U8(offset);
        if (shift > 63) {
            Fail(offset, "the number has more than 64 bits");
            return 0;
        }
        number |= static_cast<uint64_t>(byte & 0x7FU) << shift;
        offset += 1;
        if (byte < 0x80) {
            return number;
        }
    }
    return 0;
}

int64_t ByteReader::Sleb(uint64_t& offset) {
    const uint64_t start = offset;
    uint64_t number = Uleb(offset);
    const uint64_t bits = (offset - start) * 7;
    if (!failed() && bits < 64 && (U8(offset - 1) & 0x40U) != 0) {
        number |= ~uint64_t{0} << bits;
    }
    return static_cast<int64_t>(number);
}

} // namespace Tarvik::Vorn::Simulator::Doctor
