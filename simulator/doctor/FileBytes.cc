#include "FileBytes.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr size_t kBeginning = 512;

LocatedError Unreadable(const std::string& path, const std::string& message) {
    return LocatedError{path, 0, 0, message, "name a file that exists and that you may read"};
}

std::string InMegabytes(uint64_t bytes) {
    return std::to_string(bytes >> 20U) + " MB";
}

LocatedError TooLarge(const std::string& path, uint64_t limit) {
    return LocatedError{path, 0, 0, "the file is larger than " + InMegabytes(limit) + " and was not read",
                        "name the file that the game ships"};
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// A regular file, open and at its beginning.
std::variant<FileHandle, LocatedError> OpenFile(const std::string& path) {
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(path, failure);
    if (failure) {
        return Unreadable(path, failure.message());
    }
    if (!std::filesystem::is_regular_file(status)) {
        return Unreadable(path, "this is no file");
    }
    FileHandle file(std::fopen(path.c_str(), "rbe"));
    if (file == nullptr) {
        return Unreadable(path, std::strerror(errno));
    }
    return file;
}

} // namespace

std::variant<std::string, LocatedError> ReadFileBytes(const std::string& path, uint64_t limit) {
    const std::variant<FileHandle, LocatedError> file = OpenFile(path);
    if (const auto* error = std::get_if<LocatedError>(&file)) {
        return *error;
    }
    std::error_code failure;
    const uint64_t size = std::filesystem::file_size(path, failure);
    if (failure) {
        return Unreadable(path, failure.message());
    }
    if (size > limit) {
        return TooLarge(path, limit);
    }
    std::string bytes(size, '\0');
    if (std::fread(bytes.data(), 1, bytes.size(), std::get<FileHandle>(file).get()) != bytes.size()) {
        return Unreadable(path, "the file could not be read to its end");
    }
    return bytes;
}

std::variant<std::string, LocatedError> ReadFileBeginning(const std::string& path) {
    const std::variant<FileHandle, LocatedError> file = OpenFile(path);
    if (const auto* error = std::get_if<LocatedError>(&file)) {
        return *error;
    }
    std::string bytes(kBeginning, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), std::get<FileHandle>(file).get()));
    return bytes;
}

} // namespace Tarvik::Vorn::Simulator::Doctor
