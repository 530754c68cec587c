#include "HostSymbols.h"

#include "RuntimeFunctions.h"
#include "ThreadFunctions.h"

#include <dispatch/dispatch.h>
#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <map>

namespace Tarvik::Vorn::Runner {
namespace {

constexpr std::string_view kClass = "_OBJC_CLASS_$_";
constexpr std::string_view kMetaclass = "_OBJC_METACLASS_$_";
constexpr std::string_view kAnyExceptionType = "_OBJC_EHTYPE_id";
constexpr std::string_view kExceptionType = "_OBJC_EHTYPE_$_";

// std::mutex and std::condition_variable, whose functions would get the variables of the image as they are, and what
// ThreadFunctions.h leaves out.
constexpr std::array<std::string_view, 4> kOfOtherLayout{"__ZNSt3__15mutex", "__ZNSt3__118condition_variable",
                                                         "_pthread_cond_", "_pthread_rwlock_"};

// Read by the image to see whether a function has overwritten its stack; any value will do.
uint64_t sStackGuard = 0x00AFDE0DC0DE6B1A;

// Addresses that only Apple's runtime and loader look behind.
std::array<uint64_t, 16> sUnused{};

int* ErrorNumber() {
    return &errno;
}

void FillWithPattern(void* memory, const void* pattern, size_t size) {
    constexpr size_t kPattern = 16;
    for (size_t at = 0; at < size; at += kPattern) {
        std::memcpy(static_cast<char*>(memory) + at, pattern, size - at < kPattern ? size - at : kPattern);
    }
}

void* OtherSymbol(std::string_view symbol) {
    static const std::map<std::string_view, void*> symbols{
        {"___CFConstantStringClassReference", static_cast<void*>(objc_getClass("NSConstantString"))},
        {"___error", reinterpret_cast<void*>(&ErrorNumber)},
        {"___stack_chk_guard", &sStackGuard},
        {"__dispatch_main_q", dispatch_get_main_queue()},
        {"__objc_empty_cache", &sUnused},
        {"__objc_empty_vtable", &sUnused},
        {"_memset_pattern16", reinterpret_cast<void*>(&FillWithPattern)},
        {"_objc_ehtype_vtable", &sUnused},
        {"dyld_stub_binder", &sUnused}, // Nothing is left to be bound at its first use.
    };
    const auto found = symbols.find(symbol);
    return found == symbols.end() ? nullptr : found->second;
}

void* ClassNamed(std::string_view name) {
    return static_cast<void*>(objc_getClass(std::string(name).c_str()));
}

// A class's class is the first word of it.
void* MetaclassNamed(std::string_view name) {
    void* const named = ClassNamed(name);
    return named == nullptr ? nullptr : *static_cast<void**>(named);
}

// Tables of handlers hold names of classes here, where the image has records of them.
void* ExceptionTypeNamed(std::string_view name) {
    static std::map<std::string, std::string, std::less<>>& names =
        *new std::map<std::string, std::string, std::less<>>;
    std::string& kept = names[std::string(name)];
    kept = name;
    return kept.data();
}

void* LinkerSymbol(const std::string& name) {
    return dlsym(RTLD_DEFAULT, name.c_str());
}

// Tries every place at which the parameters may begin.
void* FunctionWithHostIntegers(const std::string& name) {
    for (size_t end = name.find('E'); end != std::string::npos; end = name.find('E', end + 1)) {
        if (void* const function = LinkerSymbol(WithHostIntegers(name, end))) {
            return function;
        }
    }
    return nullptr;
}

// Variables of these, initialised by the image, are not what the functions here expect.
bool IsOfOtherLayout(std::string_view symbol) {
    return std::ranges::any_of(kOfOtherLayout, [symbol](std::string_view start) { return symbol.starts_with(start); });
}

void* Find(std::string_view symbol) {
    for (void* (*const find)(std::string_view) : {&RuntimeFunction, &ThreadFunction, &OtherSymbol}) {
        if (void* const found = find(symbol)) {
            return found;
        }
    }
    if (symbol.starts_with(kClass)) {
        return ClassNamed(symbol.substr(kClass.size()));
    }
    if (symbol.starts_with(kMetaclass)) {
        return MetaclassNamed(symbol.substr(kMetaclass.size()));
    }
    if (symbol.starts_with(kExceptionType)) {
        return ExceptionTypeNamed(symbol.substr(kExceptionType.size()));
    }
    if (!symbol.starts_with('_')) {
        return nullptr;
    }
    const std::string name(symbol.substr(1));
    void* const found = LinkerSymbol(name);
    return found == nullptr && name.starts_with("_Z") ? FunctionWithHostIntegers(name) : found;
}

} // namespace

std::string WithHostIntegers(std::string_view name, size_t from) {
    std::string host(name);
    for (size_t at = from; at < host.size(); ++at) {
        size_t length = 0;
        const auto [end, failure] = std::from_chars(host.data() + at, host.data() + host.size(), length);
        if (failure == std::errc()) { // A name, with its length before it, or S0_, which stands for an earlier one.
            const auto digits = static_cast<size_t>(end - (host.data() + at));
            const bool isEarlier = at > 0 && host[at - 1] == 'S';
            at += isEarlier ? digits - 1 : digits + std::min(length, host.size()) - 1;
        } else if (host[at] == 'x') {
            host[at] = 'l';
        } else if (host[at] == 'y') {
            host[at] = 'm';
        }
    }
    return host;
}

std::optional<void*> FindHostSymbol(std::string_view symbol) {
    if (symbol == kAnyExceptionType) {
        return nullptr; // As tables of handlers have it here.
    }
    void* const found = IsOfOtherLayout(symbol) ? nullptr : Find(symbol);
    return found == nullptr ? std::nullopt : std::optional<void*>(found);
}

} // namespace Tarvik::Vorn::Runner
