#include "TemporaryFolder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

namespace Tarvik::Vorn::Bench {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vorn-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        std::fprintf(stderr, "vorn-bench: %s cannot be made: %s; set TMPDIR to a folder that can be written\n",
                     name.c_str(), std::strerror(errno));
        std::exit(2);
    }
    mPath = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

} // namespace Tarvik::Vorn::Bench
