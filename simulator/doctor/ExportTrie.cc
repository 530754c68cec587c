#include "ExportTrie.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

// A chain of nodes repeats the whole name before it in every node.
constexpr size_t kMaxNameBytes = size_t{64} << 20U;

struct Node {
    uint64_t offset = 0;
    std::string name; // On the way to it.
};

} // namespace

SymbolNames ReadExportTrie(ByteReader& trie) {
    SymbolNames names;
    std::vector<bool> seen(trie.size());
    std::vector<Node> waiting;
    if (trie.size() != 0) {
        waiting.push_back({0, ""});
    }
    size_t nameBytes = 0;
    while (!waiting.empty() && !trie.failed()) {
        const Node node = std::move(waiting.back());
        waiting.pop_back();
        uint64_t at = node.offset;
        if (at >= trie.size() || seen[at]) {
            trie.Fail(at, at >= trie.size() ? "the table of exports leads outside of itself"
                                            : "the table of exports has a loop");
            break;
        }
        seen[at] = true;
        const uint64_t information = trie.Uleb(at);
        const std::string_view aboutSymbol = trie.Part(at, information);
        if (trie.failed()) {
            break;
        }
        if (information != 0) {
            names.emplace(node.name, aboutSymbol);
        }
        at += information;
        const unsigned children = trie.U8(at);
        at += 1;
        const size_t waitingBefore = waiting.size();
        for (unsigned child = 0; child < children && !trie.failed(); ++child) {
            const std::string_view label = trie.Text(at);
            at += label.size() + 1;
            const uint64_t offset = trie.Uleb(at);
            nameBytes += node.name.size() + label.size();
            if (nameBytes > kMaxNameBytes) {
                trie.Fail(at, "the names in the table of exports are absurdly long");
                break;
            }
            waiting.push_back({offset, node.name + std::string(label)});
        }
        // The first child is visited next: of two equal names the first counts, as it does to the loader.
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(waitingBefore), waiting.end());
    }
    return names;
}

} // namespace Tarvik::Vorn::Simulator::Doctor
