// The doctor and the plugin's binary: the input is the Mach-O file, of one slice or of several.

#include "doctor/LibraryChecks.h"
#include "doctor/MachOFile.h"
#include "support/Findings.h"
#include "support/FuzzTarget.h"
#include "support/Texts.h"

#include <variant>
#include <vector>

namespace Tarvik::Vorn::Fuzz {
namespace {

using namespace Simulator::Doctor;

bool LiesIn(std::string_view bytes, std::string_view part) {
    return part.empty() || (part.data() >= bytes.data() && part.data() + part.size() <= bytes.data() + bytes.size());
}

void RequireTextsLieIn(std::string_view bytes, const MachOImage& image) {
    Require(LiesIn(bytes, image.bytes) && LiesIn(image.bytes, image.installName), "the slice lies in the file");
    for (const LoadedLibrary& library : image.libraries) {
        Require(LiesIn(image.bytes, library.path), "the paths of libraries lie in the slice");
    }
    for (const std::string_view section : image.textSections) {
        Require(LiesIn(image.bytes, section), "the texts lie in the slice");
    }
    for (const MachOSymbol& symbol : image.symbols) {
        Require(LiesIn(image.bytes, symbol.name), "the names of symbols lie in the slice");
    }
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn::Fuzz;
    const std::string path = "VornFacebook";
    const std::string_view bytes = TextOfInput(data, size);
    const std::variant<MachOFile, ByteError> file = ParseMachO(bytes);
    if (const auto* error = std::get_if<ByteError>(&file)) {
        Require(!error->message.empty() && IsUtf8(error->message), "the error says what is wrong", error->message);
        return 0;
    }
    const MachOFile& binary = std::get<MachOFile>(file);
    Require(LooksLikeMachO(bytes) && !binary.images.empty(), "a file that was read is one");
    for (const MachOImage& image : binary.images) {
        RequireTextsLieIn(bytes, image);
    }
    std::vector<Finding> findings;
    CheckLibrary(path, binary, LibraryTarget(), findings);
    RequireGoodFindings(ExaminedKind::kLibrary, path, findings);
    return 0;
}
