#include "Doctor.h"

#include "AppChecks.h"
#include "FileBytes.h"
#include "FindingText.h"
#include "FrameworkChecks.h"
#include "InfoPlistChecks.h"
#include "LibraryChecks.h"
#include "PlistFile.h"
#include "DoctorReport.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

using Result = std::variant<Examination, LocatedError>;

constexpr std::string_view kWhatToName =
    "name an Info.plist, an .app folder, VornFacebook.framework, VornFacebook.xcframework or a Mach-O file";

LocatedError Unusable(const std::string& path, const std::string& message,
                      const std::string& remedy = std::string(kWhatToName)) {
    return LocatedError{path, 0, 0, message, remedy};
}

Result Finished(Examination examination, std::optional<LocatedError> error) {
    if (error) {
        return std::move(*error);
    }
    SortFindings(examination.findings);
    return examination;
}

// Of a bundle: APPL, FMWK or XFWK; empty when it is not told.
std::string PackageType(const PlistValue& info) {
    const PlistValue* type = info.Member("CFBundlePackageType");
    return type == nullptr ? std::string() : type->text;
}

Result ExamineInfoPlist(const std::string& path) {
    std::variant<Plist, LocatedError> plist = ReadPlist(path);
    if (auto* error = std::get_if<LocatedError>(&plist)) {
        return std::move(*error);
    }
    const PlistValue& root = std::get<Plist>(plist).root;
    const std::string type = PackageType(root);
    if (type == "FMWK" || type == "XFWK") {
        return Unusable(path, "this is the Info.plist of a framework and not that of a game",
                        "name the framework's folder, or the game's Info.plist");
    }
    if (path.ends_with(".xcprivacy")) {
        return Unusable(path, "this is a privacy manifest and no Info.plist");
    }
    Examination examination{path, ExaminedKind::kInfoPlist, {}};
    CheckInfoPlist(root, InfoPlistOrigin::kFile, path, examination.findings);
    return Finished(std::move(examination), std::nullopt);
}

Result ExamineLibrary(const std::string& path) {
    std::variant<MachOOnDisk, LocatedError> binary = ReadMachO(path);
    if (auto* error = std::get_if<LocatedError>(&binary)) {
        return std::move(*error);
    }
    Examination examination{path, ExaminedKind::kLibrary, {}};
    CheckLibrary(path, std::get<MachOOnDisk>(binary).file, LibraryTarget(), examination.findings);
    return Finished(std::move(examination), std::nullopt);
}

Result ExamineFile(const std::string& path) {
    std::variant<std::string, LocatedError> read = ReadFileBeginning(path);
    if (auto* error = std::get_if<LocatedError>(&read)) {
        return std::move(*error);
    }
    const std::string& beginning = std::get<std::string>(read);
    if (LooksLikeMachO(beginning)) {
        return ExamineLibrary(path);
    }
    if (LooksLikePlist(beginning)) {
        return ExamineInfoPlist(path);
    }
    if (beginning.empty()) {
        return Unusable(path, "the file is empty");
    }
    if (beginning.starts_with("!<arch>")) {
        return Unusable(path, "this is a static library; the plugin is a dynamic one");
    }
    if (beginning.starts_with("\x7F"
                              "ELF")) {
        return Unusable(path, "this is a binary for Linux and not for iOS",
                        "name one that `make package` left in dist");
    }
    if (beginning.starts_with("PK\x03\x04")) {
        return Unusable(path, "this is an archive", "unpack it and name what is in it; an app is in Payload");
    }
    return Unusable(path, "at byte offset 0x0: neither a property list nor a Mach-O file begins here");
}

Result ExamineBundle(const std::string& path, ExaminedKind kind, const PlistValue& info) {
    const std::filesystem::path folder(path);
    Examination examination{path, kind, {}};
    std::optional<LocatedError> error;
    if (kind == ExaminedKind::kApp) {
        CheckApp(folder, info, examination.findings);
    } else if (kind == ExaminedKind::kXCFramework) {
        error = CheckXCFramework(folder, info, examination.findings);
    } else {
        error = CheckFramework(folder, LibraryTarget(), examination.findings);
    }
    return Finished(std::move(examination), std::move(error));
}

std::optional<ExaminedKind> BundleKind(const std::filesystem::path& folder, const PlistValue& info) {
    const std::string type = PackageType(info);
    // The path may end in a slash.
    const std::string name = (folder.has_filename() ? folder : folder.parent_path()).extension().string();
    if (type == "APPL" || name == ".app") {
        return ExaminedKind::kApp;
    }
    if (type == "XFWK" || name == ".xcframework") {
        return ExaminedKind::kXCFramework;
    }
    if (type == "FMWK" || name == ".framework") {
        return ExaminedKind::kFramework;
    }
    return std::nullopt;
}

Result ExamineFolder(const std::string& path) {
    const std::filesystem::path folder(path);
    const std::filesystem::path infoPath = folder / "Info.plist";
    std::error_code ignored;
    Plist info;
    const bool hasInfo = std::filesystem::exists(infoPath, ignored);
    if (hasInfo) {
        std::variant<Plist, LocatedError> read = ReadPlist(infoPath.string());
        if (auto* error = std::get_if<LocatedError>(&read)) {
            return std::move(*error);
        }
        info = std::get<Plist>(std::move(read));
    }
    const std::optional<ExaminedKind> kind = BundleKind(folder, info.root);
    if (!kind) {
        return Unusable(path, "the folder is neither an app nor a framework");
    }
    if (!hasInfo && *kind != ExaminedKind::kFramework) {
        return Unusable(path, "the folder has no Info.plist", "build or copy it anew; apps for macOS are not examined");
    }
    if (*kind == ExaminedKind::kFramework && !std::filesystem::exists(folder / "VornFacebook", ignored)) {
        return Unusable(path, "the framework has no file VornFacebook, so that it is another one or incomplete");
    }
    return ExamineBundle(path, *kind, info.root);
}

} // namespace

std::string_view ExaminedKindName(ExaminedKind kind) {
    switch (kind) {
    case ExaminedKind::kInfoPlist:
        return "info-plist";
    case ExaminedKind::kApp:
        return "app";
    case ExaminedKind::kFramework:
        return "framework";
    case ExaminedKind::kXCFramework:
        return "xcframework";
    case ExaminedKind::kLibrary:
        return "library";
    }
    return "";
}

std::variant<Examination, LocatedError> Examine(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        return ExamineFolder(path);
    }
    return ExamineFile(path);
}

} // namespace Tarvik::Vorn::Simulator::Doctor

namespace Tarvik::Vorn::Simulator {

int RunDoctor(const std::string& path, DoctorFormat format, bool color, std::FILE* out, std::FILE* err) {
    const std::variant<Doctor::Examination, LocatedError> result = Doctor::Examine(path);
    if (const auto* error = std::get_if<LocatedError>(&result)) {
        std::fprintf(err, "vornsim: %s\n", Doctor::Printable(error->text()).c_str());
        return kDoctorUnusable;
    }
    const auto& examination = std::get<Doctor::Examination>(result);
    const std::string report =
        format == DoctorFormat::kJson ? Doctor::JsonReport(examination) : Doctor::TextReport(examination, color);
    std::fwrite(report.data(), 1, report.size(), out);
    const bool isClean = std::ranges::all_of(examination.findings, [](const Doctor::Finding& finding) {
        return finding.kind->severity == Doctor::Severity::kNote;
    });
    return isClean ? kDoctorClean : kDoctorFindings;
}

} // namespace Tarvik::Vorn::Simulator
