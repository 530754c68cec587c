// The words that tie a binary to the SDK's categories: what a library gets that does no more than import FBSDKCoreKit.
#include "FacebookPlatformTest.h"
#include "LinkNames.h"

#include <algorithm>

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

// A data symbol that a library exports itself.
struct ExportedSymbol {
    std::string name;
    const void* address = nullptr;
    int binding = STB_LOCAL;
    size_t size = 0;
};

// Never closed: the runtime cannot forget a library's classes.
void* Load(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << dlerror();
    return library;
}

// Those of the names that the library at `path` exports itself, by address; its dependencies may export them too.
std::vector<ExportedSymbol> WordsOf(const char* path, const std::vector<std::string>& names) {
    void* const library = Load(path);
    std::vector<ExportedSymbol> words;
    for (const std::string& name : names) {
        const void* const address = dlsym(library, ("FBLink_" + name).c_str());
        Dl_info where{};
        const ElfW(Sym)* symbol = nullptr;
        if (address == nullptr ||
            dladdr1(address, &where, reinterpret_cast<void**>(const_cast<ElfW(Sym)**>(&symbol)), RTLD_DL_SYMENT) == 0 ||
            std::string(where.dli_fname) != path) {
            continue;
        }
        words.push_back({name, address, ELF64_ST_BIND(symbol->st_info), symbol->st_size});
    }
    std::sort(words.begin(), words.end(),
              [](const ExportedSymbol& left, const ExportedSymbol& right) { return left.address < right.address; });
    return words;
}

std::vector<std::string> NamesOf(const std::vector<ExportedSymbol>& words) {
    std::vector<std::string> names;
    names.reserve(words.size());
    for (const ExportedSymbol& word : words) {
        names.push_back(word.name);
    }
    return names;
}

class FacebookLinkWords : public FacebookPlatformTest {};

TEST_F(FacebookLinkWords, AreDefinedAndExportedInTheirOrderByALibraryThatOnlyImportsTheKit) {
    const std::vector<ExportedSymbol> words = WordsOf(VORN_ONLY_THE_IMPORT, LinkNames());

    EXPECT_THAT(NamesOf(words), ElementsAreArray(LinkNames()));
}

TEST_F(FacebookLinkWords, DoNotIncludeTheEleventhOfLaterReleases) {
    EXPECT_THAT(WordsOf(VORN_ONLY_THE_IMPORT, {"UIPasteboard_FBSDKPasteboard"}), IsEmpty());
}

TEST_F(FacebookLinkWords, AreWeakAndOnePointerLarge) {
    for (const ExportedSymbol& word : WordsOf(VORN_ONLY_THE_IMPORT, LinkNames())) {
        EXPECT_EQ(word.binding, STB_WEAK) << word.name;
        EXPECT_EQ(word.size, sizeof(void*)) << word.name;
    }
}

TEST_F(FacebookLinkWords, HoldTheAddressesOfTheKitsBytes) {
    for (const ExportedSymbol& word : WordsOf(VORN_ONLY_THE_IMPORT, LinkNames())) {
        const void* const byte = dlsym(RTLD_DEFAULT, ("FBLinkable_" + word.name).c_str());
        EXPECT_NE(byte, nullptr) << word.name;
        EXPECT_EQ(*static_cast<const void* const*>(word.address), byte) << word.name;
    }
}

TEST_F(FacebookLinkWords, AreMissingWhenSwitchedOff) {
    EXPECT_THAT(WordsOf(VORN_IMPORT_SWITCHED_OFF, LinkNames()), IsEmpty());
}

TEST_F(FacebookLinkWords, PointToALetterL) {
    for (const std::string& name : LinkNames()) {
        const void* const byte = dlsym(RTLD_DEFAULT, ("FBLinkable_" + name).c_str());
        ASSERT_NE(byte, nullptr) << name;
        EXPECT_EQ(*static_cast<const char*>(byte), 'L') << name;
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
