// An error in a text file, told so that whoever wrote the file can mend it. Plain C++, a value.
#pragma once

#include "VornExport.h"

#include <cstddef>
#include <string>

namespace Tarvik::Vorn {

struct VORN_API LocatedError {
    std::string file;
    size_t line = 0;     // From 1; 0 when the error is about the file as a whole.
    size_t column = 0;   // From 1, counted in characters; 0 with line 0.
    std::string message; // What is wrong.
    std::string remedy;  // What to do about it.

    // FILE:LINE:COLUMN: MESSAGE; REMEDY. Without a line: FILE: MESSAGE; REMEDY.
    std::string text() const;
};

} // namespace Tarvik::Vorn
