#include "Subject.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

namespace Tarvik::Vorn::Test {
namespace {

void* sLibrary = nullptr;

[[noreturn]] void Fail(const char* what, const char* detail) {
    std::fprintf(stderr, "VORN_SUBJECT: %s%s\n", what, detail);
    std::exit(2);
}

} // namespace

void LoadSubject() {
    if (sLibrary != nullptr) {
        return;
    }
    const char* path = std::getenv("VORN_SUBJECT");
    if (path == nullptr) {
        Fail("not set; set it to the path of the plugin library, or run the tests through ctest", "");
    }
    sLibrary = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (sLibrary == nullptr) {
        Fail("", dlerror());
    }
}

void* SubjectSymbol(const std::string& name) {
    return dlsym(sLibrary, name.c_str());
}

} // namespace Tarvik::Vorn::Test
