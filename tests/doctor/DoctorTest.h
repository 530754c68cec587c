// What tests of the doctor share: a folder for the files that they write, and questions about the findings in them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

class DoctorTest : public ::testing::Test {
protected:
    DoctorTest();
    ~DoctorTest() override;

    // Writes a file into the test's folder, and the folders above it; answers its path.
    std::string Write(const std::string& name, const std::string& bytes) const;

    std::string PathOf(const std::string& name) const { return (mFolder / name).string(); }

private:
    std::filesystem::path mFolder;
};

// The IDs of what is found, in order; the error alone when `path` cannot be examined.
std::vector<std::string> FoundIn(const std::string& path);

// Likewise without notes: a game in order has some.
std::vector<std::string> FaultsIn(const std::string& path);

// One field of the finding with this ID; "(none)" without it.
std::string CauseOf(const std::string& path, const std::string& id);
std::string PlaceOf(const std::string& path, const std::string& id);
std::string FileOf(const std::string& path, const std::string& id);
std::string PasteOf(const std::string& path, const std::string& id);
std::string ExplanationOf(const std::string& path, const std::string& id);

// The error when `path` cannot be examined; "(none)" when it can.
std::string ErrorOf(const std::string& path);

} // namespace Tarvik::Vorn::Test
