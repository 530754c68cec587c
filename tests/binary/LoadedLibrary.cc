#include "LoadedLibrary.h"

#include <algorithm>
#include <elf.h>
#include <functional>
#include <link.h>

// The loader's tables hold addresses as integers.
// NOLINTBEGIN(performance-no-int-to-ptr)

namespace Tarvik::Vorn::Test::LoadedLibrary {
namespace {

// Calls `look` for the library whose file name begins with `name`.
void WithLibrary(const std::string& name, const std::function<void(const dl_phdr_info&)>& look) {
    struct Search {
        std::string name;
        const std::function<void(const dl_phdr_info&)>& look;
    } search{"/" + name, look};
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* opaque) {
            const auto& sought = *static_cast<Search*>(opaque);
            const std::string path = info->dlpi_name;
            if (path.find(sought.name) == std::string::npos) {
                return 0;
            }
            sought.look(*info);
            return 1;
        },
        &search);
}

// The dynamic section of a library; its addresses have been relocated by the loader.
class Dynamic {
public:
    explicit Dynamic(const dl_phdr_info& info) {
        for (int i = 0; i < info.dlpi_phnum; ++i) {
            if (info.dlpi_phdr[i].p_type == PT_DYNAMIC) {
                mEntries = reinterpret_cast<const ElfW(Dyn)*>(info.dlpi_addr + info.dlpi_phdr[i].p_vaddr);
            }
        }
    }

    ElfW(Addr) ValueOf(ElfW(Sxword) tag) const {
        for (const ElfW(Dyn)* entry = mEntries; entry != nullptr && entry->d_tag != DT_NULL; ++entry) {
            if (entry->d_tag == tag) {
                return entry->d_un.d_ptr;
            }
        }
        return 0;
    }

private:
    const ElfW(Dyn) * mEntries = nullptr;
};

} // namespace

std::string Path(const std::string& name) {
    std::string path;
    WithLibrary(name, [&](const dl_phdr_info& info) { path = info.dlpi_name; });
    return path;
}

std::vector<const void*> ReferencesTo(const std::string& name, const std::string& symbol) {
    std::vector<const void*> references;
    WithLibrary(name, [&](const dl_phdr_info& info) {
        const Dynamic dynamic(info);
        const auto* const symbols = reinterpret_cast<const ElfW(Sym)*>(dynamic.ValueOf(DT_SYMTAB));
        const auto* const texts = reinterpret_cast<const char*>(dynamic.ValueOf(DT_STRTAB));
        const auto* const relocations = reinterpret_cast<const ElfW(Rela)*>(dynamic.ValueOf(DT_RELA));
        const size_t count = dynamic.ValueOf(DT_RELASZ) / sizeof(ElfW(Rela));
        for (size_t i = 0; i < count; ++i) {
            const ElfW(Rela)& relocation = relocations[i];
            if (relocation.r_addend == 0 && symbol == texts + symbols[ELF64_R_SYM(relocation.r_info)].st_name) {
                references.push_back(*reinterpret_cast<void* const*>(info.dlpi_addr + relocation.r_offset));
            }
        }
    });
    std::sort(references.begin(), references.end());
    references.erase(std::unique(references.begin(), references.end()), references.end());
    return references;
}

} // namespace Tarvik::Vorn::Test::LoadedLibrary

// NOLINTEND(performance-no-int-to-ptr)
