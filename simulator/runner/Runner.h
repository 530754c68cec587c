// Runs the library that ships: loads a Mach-O image for the iOS simulator on Intel into this process and gives its classes
// to the Objective-C runtime here, where everybody finds them as if dlopen had loaded the library for Linux. Main thread.
//
// The image is never unloaded, and its errors are told before any of its code runs. docs/shipped-binary.md says what is
// the same as on a device, and what is not.
#pragma once

#include "VornLocatedError.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Runner {

// Whether the file begins as a Mach-O file does. False for one that cannot be read.
bool IsImageFile(const std::string& path);

// What `path` means when somebody wants to run it: the path itself for a file, and for a framework or an xcframework the
// binary in it that is for simulators. An error when there is none.
std::optional<LocatedError> FindImageFile(const std::string& path, std::string& file);

// Loads the file, in the order in which the system does: addresses, classes, +load, C++ initialisers. An error when it
// cannot; what has been registered of its classes by then stays.
//
// Before any of its code runs, a line on `report` tells between which addresses the image lies. Reports of crashes show
// such addresses; scripts/symbolise, which reads the line, makes names of them.
std::optional<LocatedError> LoadImage(const std::string& path, std::FILE* report);

// The address of what a loaded image exports, by its name in C or its linker name in C++; null when there is none.
void* ImageSymbol(const std::string& name);

// The addresses to which loaded images refer by that name, one for each reference through the loader. None when the
// symbol is not known to it, as one that is hidden.
std::vector<const void*> ImageReferencesTo(const std::string& name);

} // namespace Tarvik::Vorn::Runner
