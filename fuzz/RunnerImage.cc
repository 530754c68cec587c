// The runner and the plugin's binary: the input is the Mach-O file. All of it is read and checked as before a run, and
// nothing of it is run.

#include "FrameTable.h"
#include "PreparedImage.h"
#include "support/FuzzTarget.h"
#include "support/Texts.h"

#include <cstring>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Fuzz {
namespace {

using namespace Runner;

// Some symbols are found, some are null, and some are missing: by their length, so that bytes decide.
std::optional<void*> FindSymbol(std::string_view symbol) {
    static int somewhere = 0;
    if (symbol.size() % 64 == 63) {
        return std::nullopt;
    }
    return symbol.size() % 16 == 15 ? nullptr : &somewhere;
}

// Reads the whole text, too.
void RequireText(const MappedImage& image, const char* text) {
    Require(image.Contains(text) && image.Contains(text + std::strlen(text)), "a text lies in the image");
}

void RequireMethods(const MappedImage& image, const std::vector<MethodRecord>& methods) {
    for (const MethodRecord& method : methods) {
        RequireText(image, method.name);
        RequireText(image, method.types);
        Require(method.code == nullptr || image.Contains(method.code), "a method's code lies in the image");
    }
}

void RequireReference(const ObjcRecords& records, const ClassReference& reference) {
    Require(!reference.own || *reference.own < records.classes.size(), "a class is one of those that there are");
}

void RequireClasses(const MappedImage& image, const ObjcRecords& records) {
    for (const ClassRecord& record : records.classes) {
        RequireText(image, record.name);
        RequireReference(records, record.superclass);
        RequireMethods(image, record.instanceMethods);
        RequireMethods(image, record.classMethods);
        for (const IvarRecord& ivar : record.ivars) {
            RequireText(image, ivar.name);
            Require(ivar.offsetPlace + kPointerSize <= image.layout().size, "an offset's variable lies in the image");
        }
        for (const size_t protocol : record.protocols) {
            Require(protocol < records.protocols.size(), "a protocol is one of those that there are");
        }
    }
}

void RequireUses(const MappedImage& image, const ObjcRecords& records) {
    for (const CategoryRecord& category : records.categories) {
        RequireText(image, category.name);
        RequireReference(records, category.extended);
        RequireMethods(image, category.instanceMethods);
    }
    for (size_t index = 0; index < records.protocols.size(); ++index) {
        for (const size_t parent : records.protocols[index].parents) {
            Require(parent < index, "a protocol's parents stand before it");
        }
    }
    for (const StringRecord& string : records.strings) {
        Require(string.place + 32 <= image.layout().size && image.Contains(string.text), "a literal lies in the image");
    }
    for (const SelectorUse& use : records.selectorUses) {
        RequireText(image, use.name);
    }
    for (const ClassUse& use : records.classUses) {
        RequireReference(records, use.used);
    }
}

void RequireFrames(const PreparedImage& image) {
    for (const UnwindEntry& entry : image.unwindEntries()) {
        Require(entry.begin < entry.end && entry.end <= image.mapped().layout().size, "a function lies in the image");
        Require(entry.handlers < image.mapped().layout().size, "the handlers lie in the image");
    }
    const FrameTable table(image.unwindEntries(), reinterpret_cast<uint64_t>(image.mapped().base()));
    Require(table.functions().size() == image.unwindEntries().size(), "each function is described");
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn::Fuzz;
    const auto prepared = PreparedImage::Prepare(std::string(TextOfInput(data, size)), FindSymbol);
    if (const auto* problem = std::get_if<std::string>(&prepared)) {
        Require(!problem->empty() && IsUtf8(*problem), "the error says what is wrong", *problem);
        return 0;
    }
    const PreparedImage& image = *std::get<std::unique_ptr<PreparedImage>>(prepared);
    RequireClasses(image.mapped(), image.records());
    RequireUses(image.mapped(), image.records());
    RequireFrames(image);
    for (const void* const initialiser : image.initialisers()) {
        Require(image.mapped().Contains(initialiser), "an initialiser lies in the image");
    }
    return 0;
}
