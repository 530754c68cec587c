// What a scenario prints: one line per thing that happens, with a word in front that says what kind of thing it is.
// Plain C++. Any thread may write; a line is written whole.
#pragma once

#include <cstdio>
#include <mutex>
#include <string>

namespace Tarvik::Vorn::Simulator {

class Transcript {
public:
    // Writes to `out`, which the caller keeps open.
    explicit Transcript(std::FILE* out) : mOut(out) {}

    // A heading that sets what follows apart.
    void Heading(const std::string& text);

    // `kind` is a short word, such as "call" or "log".
    void Line(const std::string& kind, const std::string& text);

private:
    std::mutex mMutex;
    std::FILE* mOut;
};

} // namespace Tarvik::Vorn::Simulator
