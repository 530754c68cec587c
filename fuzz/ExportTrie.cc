// The tree of names in which a Mach-O image says what it exports: the input is the tree. A second, simpler reader must
// find the same names, and the same about each.

#include "doctor/ByteReader.h"
#include "doctor/ExportTrie.h"
#include "support/FuzzTarget.h"

#include <string>

namespace Tarvik::Vorn::Fuzz {
namespace {

using namespace Simulator::Doctor;

// Of a tree that is known to be sound, so without a look at any bound. The depth is at most that of the tree's bytes.
class SoundTrie {
public:
    explicit SoundTrie(std::string_view bytes) : mBytes(bytes) {}

    void Collect(size_t node, const std::string& name, SymbolNames& names) const {
        size_t at = node;
        const uint64_t information = Number(at);
        if (information != 0) {
            names.emplace(name, mBytes.substr(at, information));
        }
        at += information;
        const auto children = static_cast<unsigned char>(mBytes.at(at++));
        for (unsigned child = 0; child < children; ++child) {
            const std::string label(mBytes.substr(at, mBytes.find('\0', at) - at));
            at += label.size() + 1;
            const uint64_t next = Number(at);
            Collect(next, name + label, names);
        }
    }

private:
    uint64_t Number(size_t& at) const {
        uint64_t number = 0;
        for (unsigned shift = 0;; shift += 7) {
            const auto byte = static_cast<unsigned char>(mBytes.at(at++));
            number |= shift < 64 ? uint64_t{byte & 0x7fU} << shift : 0;
            if (byte < 0x80) {
                return number;
            }
        }
    }

    std::string_view mBytes;
};

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn::Fuzz;
    const std::string_view bytes = TextOfInput(data, size);
    ByteReader reader(bytes);
    const SymbolNames names = ReadExportTrie(reader);
    if (reader.failed()) {
        Require(!reader.error()->message.empty(), "the error says what is wrong");
        return 0;
    }
    SymbolNames expected;
    if (!bytes.empty()) {
        SoundTrie(bytes).Collect(0, "", expected);
    }
    Require(names == expected, "both readers find the same names, and the same about each");
    return 0;
}
