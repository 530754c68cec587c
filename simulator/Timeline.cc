#include "Transcript.h"

namespace Tarvik::Vorn::Simulator {

void Transcript::Heading(const std::string& text) {
    const std::lock_guard lock(mMutex);
    std::fprintf(mOut, "\n== %s\n", text.c_str());
}

void Transcript::Line(const std::string& kind, const std::string& text) {
    const std::lock_guard lock(mMutex);
    std::fprintf(mOut, "  %-9s %s\n", kind.c_str(), text.c_str());
}

} // namespace Tarvik::Vorn::Simulator
