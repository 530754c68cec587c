#include "Subject.h"

#include "Runner.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

namespace Tarvik::Vorn::Test {
namespace {

void* sLibrary = nullptr;
bool sIsImage = false;

[[noreturn]] void Fail(const char* what, const char* detail) {
    std::fprintf(stderr, "VORN_SUBJECT: %s%s\n", what, detail);
    std::exit(2);
}

void LoadImageAt(const char* path) {
    if (const std::optional<LocatedError> error = Runner::LoadImage(path, stderr)) {
        Fail("", error->text().c_str());
    }
}

} // namespace

void LoadSubject() {
    if (sLibrary != nullptr || sIsImage) {
        return;
    }
    const char* path = std::getenv("VORN_SUBJECT");
    if (path == nullptr) {
        Fail("not set; set it to the path of the plugin library, or run the tests through ctest", "");
    }
    sIsImage = Runner::IsImageFile(path);
    if (sIsImage) {
        return LoadImageAt(path);
    }
    sLibrary = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (sLibrary == nullptr) {
        Fail("", dlerror());
    }
}

bool SubjectIsShippedBinary() {
    LoadSubject();
    return sIsImage;
}

void* SubjectSymbol(const std::string& name) {
    if (!sIsImage) {
        return dlsym(sLibrary, name.c_str());
    }
    void* const own = Runner::ImageSymbol(name);
    return own != nullptr ? own : dlsym(RTLD_DEFAULT, name.c_str());
}

} // namespace Tarvik::Vorn::Test
