// Examines a game's integration of the plugin without running anything: an Info.plist, a built app, the plugin's
// framework, its xcframework or its binary. Plain C++, any thread; reads files and changes none.
#pragma once

#include "Finding.h"
#include "VornLocatedError.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

enum class ExaminedKind { kInfoPlist, kApp, kFramework, kXCFramework, kLibrary };

// "info-plist", "app", "framework", "xcframework" or "library".
std::string_view ExaminedKindName(ExaminedKind kind);

struct Examination {
    std::string path; // As it was given.
    ExaminedKind kind = ExaminedKind::kInfoPlist;
    std::vector<Finding> findings; // In the order in which they are to be read.
};

// What is wrong with `path`, which is recognised by looking at it. An error when it is none of the things above, or
// cannot be read: it names the file, the line or the byte offset where that is known, and the remedy.
std::variant<Examination, LocatedError> Examine(const std::string& path);

} // namespace Tarvik::Vorn::Simulator::Doctor

namespace Tarvik::Vorn::Simulator {

enum class DoctorFormat { kText, kJson };

inline constexpr int kDoctorClean = 0;    // No findings but notes.
inline constexpr int kDoctorFindings = 1; // An error or a warning.
inline constexpr int kDoctorUnusable = 2; // Nothing could be examined; `err` has the reason.

// Examines `path` and prints the findings to `out`. `color` is for terminals, and for text only.
int RunDoctor(const std::string& path, DoctorFormat format, bool color, std::FILE* out, std::FILE* err);

} // namespace Tarvik::Vorn::Simulator
