#include "Fixups.h"

#include <string>
#include <utility>

namespace Tarvik::Vorn::Runner {
namespace {

constexpr uint8_t kOptionalImport = 0x01;

// Walks over one stream of opcodes. What rebasing and binding have in common: a place that moves through the segments.
class Stream {
public:
    Stream(const ImageLayout& layout, std::string_view opcodes)
        : mLayout(layout), mReader(opcodes, layout.FileOffsetOf(opcodes)) {}

    // The next opcode, in the upper half of a byte; its operand is then in the lower half. False at the end.
    bool Next() {
        if (mReader.failed() || mAt >= mReader.size()) {
            return false;
        }
        const unsigned byte = mReader.U8(mAt++);
        mOpcode = byte >> 4U;
        mOperand = static_cast<uint8_t>(byte & 0x0FU);
        return true;
    }

    void End() { mAt = mReader.size(); }

    void GoTo(unsigned segment) {
        const uint64_t offset = Number();
        if (segment >= mLayout.segments.size()) {
            return Fail("there is no segment " + std::to_string(segment));
        }
        mSegment = &mLayout.segments[segment];
        mOffset = offset;
    }

    void Skip(uint64_t bytes) { mOffset += bytes; }

    // The place of a pointer here; the stream then stands behind it. 0 with a failure when there is no room for one.
    uint64_t Take() {
        const bool isRoom = mSegment != nullptr && mSegment->takesFixups && mSegment->size >= kPointerSize &&
                            mOffset <= mSegment->size - kPointerSize;
        if (!isRoom) {
            Fail("a fixup is outside of the segments that may be written");
            return 0;
        }
        // No place needs two; without a bound a few bytes could ask for any number.
        mTaken += kPointerSize;
        if (mTaken > mLayout.size) {
            Fail("there are more fixups than places for them");
            return 0;
        }
        const uint64_t place = mSegment->place + mOffset;
        mOffset += kPointerSize;
        return place;
    }

    uint64_t Number() { return mReader.Uleb(mAt); }
    int64_t SignedNumber() { return mReader.Sleb(mAt); }

    std::string_view Text() {
        const std::string_view text = mReader.Text(mAt);
        mAt += text.size() + 1;
        return text;
    }

    void Fail(const std::string& message) { mReader.Fail(mAt == 0 ? 0 : mAt - 1, message); }

    unsigned opcode() const { return mOpcode; }
    uint8_t operand() const { return mOperand; }
    bool failed() const { return mReader.failed(); }
    const std::optional<ByteError>& error() const { return mReader.error(); }

private:
    const ImageLayout& mLayout;
    ByteReader mReader;
    uint64_t mAt = 0;
    unsigned mOpcode = 0;
    uint8_t mOperand = 0;
    const Segment* mSegment = nullptr;
    uint64_t mOffset = 0; // In the segment. May lie anywhere between two fixups.
    uint64_t mTaken = 0;
};

// Calls `one` for each of `count` fixups, and skips `gap` bytes behind each.
template <class Function>
void Repeat(Stream& stream, uint64_t count, uint64_t gap, const Function& one) {
    for (uint64_t index = 0; index < count && !stream.failed(); ++index) {
        one();
        stream.Skip(gap);
    }
}

std::optional<ByteError> ReadRebases(const ImageLayout& layout, std::vector<uint64_t>& rebases) {
    Stream stream(layout, layout.rebases);
    const auto one = [&] { rebases.push_back(stream.Take()); };
    while (stream.Next()) {
        switch (stream.opcode()) {
        case 0x0: // The end.
            stream.End();
            break;
        case 0x1: // The kind of what is written, which is a pointer.
            break;
        case 0x2:
            stream.GoTo(stream.operand());
            break;
        case 0x3:
            stream.Skip(stream.Number());
            break;
        case 0x4:
            stream.Skip(stream.operand() * kPointerSize);
            break;
        case 0x5:
            Repeat(stream, stream.operand(), 0, one);
            break;
        case 0x6:
            Repeat(stream, stream.Number(), 0, one);
            break;
        case 0x7:
            one();
            stream.Skip(stream.Number());
            break;
        case 0x8: {
            const uint64_t count = stream.Number();
            const uint64_t gap = stream.Number();
            Repeat(stream, count, gap, one);
            break;
        }
        default:
            stream.Fail("there is no rebase opcode " + std::to_string(stream.opcode()));
        }
    }
    return stream.error();
}

// `isLazy`: each pointer ends with the opcode that ends other streams.
std::optional<ByteError> ReadBinds(const ImageLayout& layout, std::string_view opcodes, bool isLazy,
                                   std::vector<Bind>& binds) {
    Stream stream(layout, opcodes);
    Bind bind;
    const auto one = [&] {
        bind.place = stream.Take();
        binds.push_back(bind);
    };
    while (stream.Next()) {
        switch (stream.opcode()) {
        case 0x0:
            if (!isLazy) {
                stream.End();
            }
            break;
        case 0x1: // Which library has it: here the whole process is searched.
        case 0x3:
        case 0x5: // The kind of what is written, which is a pointer.
            break;
        case 0x2:
            stream.Number();
            break;
        case 0x4:
            bind.symbol = stream.Text();
            bind.isOptional = (stream.operand() & kOptionalImport) != 0;
            bind.addend = 0;
            break;
        case 0x6:
            bind.addend = stream.SignedNumber();
            break;
        case 0x7:
            stream.GoTo(stream.operand());
            break;
        case 0x8:
            stream.Skip(stream.Number());
            break;
        case 0x9:
            one();
            break;
        case 0xA:
            one();
            stream.Skip(stream.Number());
            break;
        case 0xB:
            one();
            stream.Skip(stream.operand() * kPointerSize);
            break;
        case 0xC: {
            const uint64_t count = stream.Number();
            const uint64_t gap = stream.Number();
            Repeat(stream, count, gap, one);
            break;
        }
        default:
            stream.Fail("there is no bind opcode " + std::to_string(stream.opcode()));
        }
    }
    return stream.error();
}

} // namespace

std::variant<Fixups, ByteError> ReadFixups(const ImageLayout& layout) {
    Fixups fixups;
    std::optional<ByteError> error = ReadRebases(layout, fixups.rebases);
    if (!error) {
        error = ReadBinds(layout, layout.binds, false, fixups.binds);
    }
    if (!error) {
        error = ReadBinds(layout, layout.lazyBinds, true, fixups.binds);
    }
    if (!error) {
        error = ReadBinds(layout, layout.weakBinds, false, fixups.weakBinds);
    }
    if (error) {
        return *error;
    }
    return fixups;
}

} // namespace Tarvik::Vorn::Runner
