// The tree of names in which a Mach-O image says what it exports. Plain C++, any thread.
#pragma once

#include "ByteReader.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {

// By name: what the tree says of the symbol, kind and place, which lies in the bytes that were read.
using SymbolNames = std::map<std::string, std::string_view, std::less<>>;

// The names in the tree that `trie` reads; empty for an empty one. A tree that leads outside, into a loop, or to names
// that are longer together than any library's fails in `trie`.
SymbolNames ReadExportTrie(ByteReader& trie);

} // namespace Tarvik::Vorn::Simulator::Doctor
