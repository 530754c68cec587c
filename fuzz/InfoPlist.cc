// The doctor and the Info.plist of a game: the input is the file, XML or binary.

#include "doctor/FindingText.h"
#include "doctor/InfoPlistChecks.h"
#include "doctor/PlistFile.h"
#include "support/Findings.h"
#include "support/FuzzTarget.h"
#include "support/Texts.h"

#include <variant>
#include <vector>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    using namespace Tarvik::Vorn::Simulator::Doctor;
    const std::string path = "Info.plist";
    const std::string_view bytes = TextOfInput(data, size);
    const std::variant<Plist, LocatedError> plist = ParsePlist(path, bytes);
    if (const auto* error = std::get_if<LocatedError>(&plist)) {
        RequireGoodError(*error, path, bytes);
        RequirePrintable(Printable(error->text()));
        return 0;
    }
    const PlistValue& root = std::get<Plist>(plist).root;
    Require(root.type == PlistType::kDictionary, "a property list is a dictionary");
    for (const InfoPlistOrigin origin : {InfoPlistOrigin::kFile, InfoPlistOrigin::kBuiltApp}) {
        std::vector<Finding> findings;
        CheckInfoPlist(root, origin, path, findings);
        RequireGoodFindings(ExaminedKind::kInfoPlist, path, findings);
    }
    return 0;
}
