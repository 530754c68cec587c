#include "UnwindEntries.h"

#include <algorithm>
#include <map>
#include <utility>

namespace Tarvik::Vorn::Runner {
namespace {

constexpr uint64_t kIndexEntrySize = 12;
constexpr uint64_t kHandlersEntrySize = 8;
constexpr uint64_t kWord = 8;

constexpr uint32_t kRegularPage = 2;
constexpr uint32_t kCompressedPage = 3;

// An encoding: kind in bits 24 to 27, personality in 28 and 29.
enum EncodingKind : uint32_t { kFramePointer = 1, kFrameless = 2, kFramelessLarge = 3 };

constexpr unsigned kRbp = 6; // DWARF numbers.
constexpr unsigned kRsp = 7;
constexpr std::array<unsigned, 7> kDwarfNumbers{0, 3, 12, 13, 14, 15, kRbp}; // By compact number; 0 is none.

struct Function {
    uint64_t begin = 0;
    uint64_t end = 0;
    uint32_t encoding = 0;
};

uint32_t Bits(uint32_t encoding, unsigned lowest, unsigned count) {
    return encoding >> lowest & ((1U << count) - 1);
}

// The registers of a frameless function: which of the six, in which order, as the number of the permutation.
std::vector<SavedRegister> PermutedRegisters(unsigned count, unsigned permutation) {
    std::vector<unsigned> digits(count);
    // The number's digits have the weights (5 * 4 * ...), (4 * ...), ..., so that the last is taken off first.
    for (unsigned index = count; index > 0; --index) {
        const unsigned choices = 6 - (index - 1);
        digits[index - 1] = permutation % choices;
        permutation /= choices;
    }
    std::vector<unsigned> left{1, 2, 3, 4, 5, 6};
    std::vector<SavedRegister> saved;
    for (unsigned index = 0; index < count; ++index) {
        const auto chosen = left.begin() + static_cast<std::ptrdiff_t>(digits[index]);
        saved.push_back({kDwarfNumbers.at(*chosen), 1 + count - index});
        left.erase(chosen);
    }
    return saved;
}

class UnwindReader {
public:
    UnwindReader(const MappedImage& image, const Section& section)
        : mImage(image), mReader(image.memory().substr(section.place, section.size), section.place),
          mMemory(image.memory()) {}

    std::variant<std::vector<UnwindEntry>, ByteError> Read() {
        ReadIndex();
        for (const Function& function : mFunctions) {
            AddEntry(function);
        }
        if (mReader.failed() || mMemory.failed()) {
            return mReader.failed() ? *mReader.error() : *mMemory.error();
        }
        return std::move(mEntries);
    }

private:
    // Head: version, encodings, personalities and index, each but the first as offset and count.
    void ReadIndex() {
        const uint64_t index = mReader.U32(20);
        const uint64_t count = mReader.U32(24);
        mReader.Part(index, count * kIndexEntrySize);
        if (count == 0 || mReader.failed()) {
            return;
        }
        ReadHandlers(mReader.U32(index + 8), mReader.U32(index + kIndexEntrySize * (count - 1) + 8));
        for (uint64_t entry = 0; entry < count && !mReader.failed(); ++entry) {
            const uint64_t at = index + entry * kIndexEntrySize;
            const uint64_t begin = mReader.U32(at);
            const uint64_t page = mReader.U32(at + 4);
            if (page == 0) { // The last entry tells where the last function ends.
                EndFunctionAt(begin, at);
            } else {
                ReadPage(page, begin);
            }
        }
    }

    void ReadHandlers(uint64_t from, uint64_t to) {
        for (uint64_t at = from; at < to && !mReader.failed(); at += kHandlersEntrySize) {
            mHandlers[mReader.U32(at)] = mReader.U32(at + 4);
        }
    }

    void ReadPage(uint64_t page, uint64_t begin) {
        const uint32_t kind = mReader.U32(page);
        const uint64_t entries = page + mReader.U16(page + 4);
        const uint64_t count = mReader.U16(page + 6);
        const uint64_t encodings = page + (kind == kCompressedPage ? mReader.U16(page + 8) : 0);
        if (kind != kRegularPage && kind != kCompressedPage) {
            return mReader.Fail(page, "a page of unwind entries is of an unknown kind");
        }
        for (uint64_t index = 0; index < count && !mReader.failed(); ++index) {
            if (kind == kRegularPage) {
                const uint64_t at = entries + index * 8;
                AddFunction(mReader.U32(at), mReader.U32(at + 4), at);
            } else {
                const uint64_t at = entries + index * 4;
                const uint32_t entry = mReader.U32(at);
                AddFunction(begin + (entry & 0xFFFFFFU), Encoding(entry >> 24U, encodings), at);
            }
        }
    }

    // Those that many functions share stand before those of one page.
    uint32_t Encoding(uint64_t number, uint64_t encodingsOfPage) {
        const uint64_t shared = mReader.U32(8);
        return number < shared ? mReader.U32(mReader.U32(4) + number * 4)
                               : mReader.U32(encodingsOfPage + (number - shared) * 4);
    }

    void AddFunction(uint64_t begin, uint32_t encoding, uint64_t at) {
        EndFunctionAt(begin, at);
        mFunctions.push_back({begin, begin, encoding});
    }

    void EndFunctionAt(uint64_t place, uint64_t at) {
        if (place > mImage.layout().size || (!mFunctions.empty() && place < mFunctions.back().begin)) {
            return mReader.Fail(at, "the functions of the unwind entries are outside of the image, or in disorder");
        }
        if (!mFunctions.empty()) {
            mFunctions.back().end = place;
        }
    }

    void AddEntry(const Function& function) {
        UnwindEntry entry;
        entry.begin = function.begin;
        entry.end = function.end;
        switch (Bits(function.encoding, 24, 4)) {
        case kFramePointer:
            DescribeFramePointer(function.encoding, entry);
            break;
        case kFrameless:
        case kFramelessLarge:
            DescribeFrameless(function, entry);
            break;
        default: // Nothing to unwind, or told by call frame information.
            return;
        }
        AddHandlers(function, entry);
        if (entry.begin < entry.end) {
            mEntries.push_back(std::move(entry));
        }
    }

    // Five registers of three bits each, from `offset` words below the saved frame pointer upwards.
    void DescribeFramePointer(uint32_t encoding, UnwindEntry& entry) {
        entry.frameRegister = kRbp;
        entry.frameSize = 2 * kWord;
        entry.saved.push_back({kRbp, 2});
        const unsigned offset = Bits(encoding, 16, 8);
        for (unsigned index = 0; index < 5; ++index) {
            const unsigned compact = Bits(encoding, 3 * index, 3);
            if (compact > 6 || (compact != 0 && index > offset)) {
                return mReader.Fail(0, "an unwind entry saves a register that there is not, or outside of its frame");
            }
            if (compact != 0) {
                entry.saved.push_back({kDwarfNumbers.at(compact), 2 + offset - index});
            }
        }
    }

    // The frame's size is in the entry, or, when that is too small for it, in the instruction that makes the frame.
    void DescribeFrameless(const Function& function, UnwindEntry& entry) {
        const uint32_t encoding = function.encoding;
        uint64_t words = Bits(encoding, 16, 8);
        if (Bits(encoding, 24, 4) == kFramelessLarge) {
            words = mMemory.U32(function.begin + words) / kWord + Bits(encoding, 13, 3);
        }
        const unsigned count = Bits(encoding, 10, 3);
        if (count > 6) {
            return mReader.Fail(0, "an unwind entry saves more registers than there are");
        }
        entry.frameRegister = kRsp;
        entry.frameSize = words * kWord;
        entry.saved = PermutedRegisters(count, Bits(encoding, 0, 10));
    }

    void AddHandlers(const Function& function, UnwindEntry& entry) {
        const auto handlers = mHandlers.find(function.begin);
        const uint32_t number = Bits(function.encoding, 28, 2);
        if (handlers == mHandlers.end() || number == 0) {
            return;
        }
        const uint64_t slot = mReader.U32(mReader.U32(12) + (number - 1) * 4);
        if (number > mReader.U32(16) || handlers->second >= mImage.layout().size) {
            return mReader.Fail(0, "the handlers of an unwind entry are outside of the image");
        }
        entry.handlers = handlers->second;
        entry.personality = mMemory.U64(slot);
    }

    const MappedImage& mImage;
    ByteReader mReader; // Of the section.
    ByteReader mMemory;
    std::map<uint64_t, uint64_t> mHandlers; // By the beginning of the function.
    std::vector<Function> mFunctions;
    std::vector<UnwindEntry> mEntries;
};

} // namespace

std::variant<std::vector<UnwindEntry>, ByteError> ReadUnwindEntries(const MappedImage& image) {
    const Section* const section = image.layout().Find("__unwind_info");
    if (section == nullptr) {
        return std::vector<UnwindEntry>();
    }
    return UnwindReader(image, *section).Read();
}

} // namespace Tarvik::Vorn::Runner
