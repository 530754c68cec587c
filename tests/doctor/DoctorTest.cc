#include "DoctorTest.h"

#include "Doctor.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <system_error>
#include <variant>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Doctor;

std::optional<Finding> FindingIn(const std::string& path, const std::string& id) {
    const std::variant<Examination, LocatedError> result = Examine(path);
    const auto* examination = std::get_if<Examination>(&result);
    if (examination == nullptr) {
        return std::nullopt;
    }
    const auto found =
        std::ranges::find_if(examination->findings, [&id](const Finding& finding) { return finding.kind->id == id; });
    return found == examination->findings.end() ? std::nullopt : std::optional(*found);
}

std::vector<std::string> Found(const std::string& path, bool withNotes) {
    const std::variant<Examination, LocatedError> result = Examine(path);
    if (const auto* error = std::get_if<LocatedError>(&result)) {
        return {error->text()};
    }
    std::vector<std::string> ids;
    for (const Finding& finding : std::get<Examination>(result).findings) {
        if (withNotes || finding.kind->severity != Severity::kNote) {
            ids.emplace_back(finding.kind->id);
        }
    }
    return ids;
}

} // namespace

DoctorTest::DoctorTest() {
    std::string name = (std::filesystem::temp_directory_path() / "vorn-doctor-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        ADD_FAILURE() << "no folder could be made as " << name;
    }
    mFolder = name;
}

DoctorTest::~DoctorTest() {
    std::error_code ignored;
    std::filesystem::remove_all(mFolder, ignored);
}

std::string DoctorTest::Write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path path = mFolder / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
}

std::vector<std::string> FoundIn(const std::string& path) {
    return Found(path, true);
}

std::vector<std::string> FaultsIn(const std::string& path) {
    return Found(path, false);
}

std::string CauseOf(const std::string& path, const std::string& id) {
    const std::optional<Finding> finding = FindingIn(path, id);
    return finding ? finding->cause : "(none)";
}

std::string PlaceOf(const std::string& path, const std::string& id) {
    const std::optional<Finding> finding = FindingIn(path, id);
    return finding ? finding->place : "(none)";
}

std::string FileOf(const std::string& path, const std::string& id) {
    const std::optional<Finding> finding = FindingIn(path, id);
    return finding ? finding->file : "(none)";
}

std::string PasteOf(const std::string& path, const std::string& id) {
    const std::optional<Finding> finding = FindingIn(path, id);
    return finding ? finding->paste : "(none)";
}

std::string ExplanationOf(const std::string& path, const std::string& id) {
    const std::optional<Finding> finding = FindingIn(path, id);
    return finding ? std::string(finding->explainedBy) : "(none)";
}

std::string ErrorOf(const std::string& path) {
    const std::variant<Examination, LocatedError> result = Examine(path);
    const auto* error = std::get_if<LocatedError>(&result);
    return error == nullptr ? "(none)" : error->text();
}

} // namespace Tarvik::Vorn::Test
