#include "PreparedImage.h"

#include "../doctor/FindingText.h"

#include <utility>

namespace Tarvik::Vorn::Runner {
namespace {

using Simulator::Doctor::Hexadecimal;
using Simulator::Doctor::Printable;

std::string InFile(const ByteError& error) {
    return "at byte " + std::to_string(error.offset) + " of the file: " + error.message;
}

std::string InMemory(const ByteError& error) {
    return "at " + Hexadecimal(error.offset) + " of its memory: " + error.message;
}

std::string Listed(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + Printable(name);
    }
    return list;
}

// The result in its place, or the error that there is instead.
template <class T>
std::optional<ByteError> Take(std::variant<T, ByteError> result, T& place) {
    if (const auto* error = std::get_if<ByteError>(&result)) {
        return *error;
    }
    place = std::get<T>(std::move(result));
    return std::nullopt;
}

// The sections of initialisers hold their addresses.
std::variant<std::vector<const void*>, ByteError> ReadInitialisers(const MappedImage& image) {
    constexpr uint32_t kInitialisers = 0x09;
    std::vector<const void*> initialisers;
    ByteReader reader(image.memory());
    for (const Section& section : image.layout().sections) {
        for (uint64_t at = 0; section.type == kInitialisers && at < section.size; at += kPointerSize) {
            const uint64_t place = reader.U64(section.place + at) - reinterpret_cast<uint64_t>(image.base());
            if (place >= image.layout().size) {
                reader.Fail(section.place + at, "an initialiser is outside of the image");
            }
            if (reader.failed()) {
                return *reader.error();
            }
            initialisers.push_back(image.At(place));
        }
    }
    return initialisers;
}

} // namespace

std::variant<std::unique_ptr<PreparedImage>, std::string> PreparedImage::Prepare(std::string file,
                                                                                 const MappedImage::Finder& find) {
    std::unique_ptr<PreparedImage> image(new PreparedImage(std::move(file)));
    std::string problem = image->Read(find);
    if (!problem.empty()) {
        return problem;
    }
    return image;
}

std::string PreparedImage::Read(const MappedImage::Finder& find) {
    std::optional<ByteError> error = Take(ReadImageLayout(mFile), mLayout);
    if (!error) {
        error = Take(ReadFixups(mLayout), mFixups);
    }
    if (error) {
        return InFile(*error);
    }
    const std::string problem = Map(find);
    return problem.empty() ? ReadMemory() : problem;
}

std::string PreparedImage::Map(const MappedImage::Finder& find) {
    mMapped = std::make_unique<MappedImage>(mLayout, mFixups);
    if (!mMapped->isMapped()) {
        return "there is no memory for it";
    }
    const std::vector<std::string> missing = mMapped->BindSymbols(mFixups, find);
    return missing.empty() ? "" : "it imports what this process does not have: " + Listed(missing);
}

std::string PreparedImage::ReadMemory() {
    std::optional<ByteError> error = Take(ReadObjcRecords(*mMapped), mRecords);
    if (!error) {
        error = Take(ReadUnwindEntries(*mMapped), mUnwindEntries);
    }
    if (!error) {
        error = Take(ReadInitialisers(*mMapped), mInitialisers);
    }
    return error ? InMemory(*error) : "";
}

} // namespace Tarvik::Vorn::Runner
