// A folder for the files of a benchmark, which goes with them when the object does.
#pragma once

#include <filesystem>

namespace Tarvik::Vorn::Bench {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return mPath; }

private:
    std::filesystem::path mPath;
};

} // namespace Tarvik::Vorn::Bench
