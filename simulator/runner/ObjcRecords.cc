#include "ObjcRecords.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

// Pointers in the image's memory are read as numbers, whose place is checked before they are followed.
// NOLINTBEGIN(performance-no-int-to-ptr)

namespace Tarvik::Vorn::Runner {
namespace {

// Sizes of the records, as the compiler writes them.
constexpr uint64_t kMethodSize = 24;
constexpr uint64_t kIvarSize = 32;
constexpr uint64_t kListHeadSize = 8;
constexpr uint64_t kStringSize = 32;

constexpr uint32_t kEntrySizeMask = 0xFFFC;       // The lowest bits are the runtime's.
constexpr uint32_t kRelativeMethods = 0x80000000; // 32-bit distances in place of pointers.
constexpr uint64_t kRuntimeBits = 7;              // Of the pointer to a class's constant part.
constexpr uint64_t kUtf16Text = 0x10;             // In a string's flags.

constexpr size_t kDeepestProtocol = 64;

class RecordReader {
public:
    explicit RecordReader(const MappedImage& image) : mImage(image), mReader(image.memory()) {}

    std::variant<ObjcRecords, ByteError> Read() {
        NumberClasses();
        for (const uint64_t place : mClassPlaces) {
            mRecords.classes.push_back(ReadClass(place));
        }
        CheckSuperclasses();
        EachPointer("__objc_protolist", [this](uint64_t at) { ProtocolAt(Target(at), 0); });
        EachPointer("__objc_catlist", [this](uint64_t at) { mRecords.categories.push_back(ReadCategory(Target(at))); });
        EachPointer("__objc_selrefs", [this](uint64_t at) { mRecords.selectorUses.push_back({at, Text(at)}); });
        for (const char* section : {"__objc_classrefs", "__objc_superrefs"}) {
            EachPointer(section, [this](uint64_t at) { mRecords.classUses.push_back({at, ClassAt(at)}); });
        }
        EachPointer("__objc_protorefs", [this](uint64_t at) {
            mRecords.protocolUses.push_back({at, ProtocolAt(Target(at), 0)});
        });
        Each("__cfstring", kStringSize, [this](uint64_t at) { mRecords.strings.push_back(ReadString(at)); });
        if (mReader.failed()) {
            return *mReader.error();
        }
        return std::move(mRecords);
    }

private:
    template <class Function>
    void Each(std::string_view name, uint64_t size, const Function& one) {
        const Section* const section = mImage.layout().Find(name);
        for (uint64_t at = 0; section != nullptr && at < section->size && !mReader.failed(); at += size) {
            one(section->place + at);
        }
    }

    template <class Function>
    void EachPointer(std::string_view name, const Function& one) {
        Each(name, kPointerSize, one);
    }

    // The place to which the pointer at `at` leads; empty for null. Fails when that is outside of the image.
    std::optional<uint64_t> OptionalTarget(uint64_t at, uint64_t ignoredBits = 0) {
        const uint64_t address = mReader.U64(at) & ~ignoredBits;
        if (mReader.failed() || address == 0) {
            return std::nullopt;
        }
        if (!mImage.Contains(reinterpret_cast<const void*>(address))) {
            mReader.Fail(at, "a pointer of the Objective-C records leads outside of the image");
            return std::nullopt;
        }
        return address - reinterpret_cast<uint64_t>(mImage.base());
    }

    uint64_t Target(uint64_t at, uint64_t ignoredBits = 0) {
        const std::optional<uint64_t> target = OptionalTarget(at, ignoredBits);
        if (!target) {
            mReader.Fail(at, "a pointer of the Objective-C records is null");
        }
        return target.value_or(0);
    }

    const char* Text(uint64_t at) {
        const std::string_view text = mReader.Text(Target(at));
        return mReader.failed() ? "" : text.data();
    }

    // How many entries of `size` bytes the list at `at` has; its head says size and number.
    uint32_t EntriesOf(uint64_t at, uint64_t size) {
        const uint32_t head = mReader.U32(at);
        const uint32_t count = mReader.U32(at + 4);
        if ((head & kRelativeMethods) != 0) {
            mReader.Fail(at,
                         "the image has relative method lists, which the runner cannot read; compile it for iOS 13");
        } else if ((head & kEntrySizeMask) != size) {
            mReader.Fail(at, "a list of the Objective-C records has entries of another size");
        }
        mReader.Part(at + kListHeadSize, count * size);
        return mReader.failed() ? 0 : count;
    }

    std::vector<MethodRecord> Methods(uint64_t at, bool hasCode = true) {
        std::vector<MethodRecord> methods;
        const std::optional<uint64_t> list = OptionalTarget(at);
        const uint32_t count = list ? EntriesOf(*list, kMethodSize) : 0;
        for (uint32_t index = 0; index < count && !mReader.failed(); ++index) {
            const uint64_t entry = *list + kListHeadSize + index * kMethodSize;
            void* const code = hasCode ? mImage.At(Target(entry + 16)) : nullptr;
            methods.push_back({Text(entry), Text(entry + 8), code});
        }
        return methods;
    }

    std::vector<IvarRecord> Ivars(uint64_t at) {
        std::vector<IvarRecord> ivars;
        const std::optional<uint64_t> list = OptionalTarget(at);
        const uint32_t count = list ? EntriesOf(*list, kIvarSize) : 0;
        for (uint32_t index = 0; index < count && !mReader.failed(); ++index) {
            const uint64_t entry = *list + kListHeadSize + index * kIvarSize;
            IvarRecord ivar{Text(entry + 8), Text(entry + 16), mReader.U32(entry + 24), mReader.U32(entry + 28),
                            Target(entry)};
            mReader.Part(ivar.offsetPlace, kPointerSize);
            if (ivar.alignment > 4 || ivar.size > mImage.layout().size) {
                mReader.Fail(entry + 24, "an instance variable has an absurd size or alignment");
            }
            ivars.push_back(ivar);
        }
        return ivars;
    }

    std::vector<size_t> Protocols(uint64_t at, size_t depth) {
        std::vector<size_t> protocols;
        const std::optional<uint64_t> list = OptionalTarget(at);
        const uint64_t count = list ? mReader.U64(*list) : 0;
        for (uint64_t index = 0; index < count && !mReader.failed(); ++index) {
            protocols.push_back(ProtocolAt(Target(*list + kPointerSize * (index + 1)), depth));
        }
        return protocols;
    }

    // The number of the protocol at `place`, which is read when it is met first.
    size_t ProtocolAt(uint64_t place, size_t depth) {
        const auto known = mProtocolNumbers.find(place);
        if (known != mProtocolNumbers.end()) {
            return known->second;
        }
        if (depth > kDeepestProtocol) {
            mReader.Fail(place, "a protocol is its own parent, or has absurdly many");
        }
        if (mReader.failed()) {
            return 0;
        }
        // Optional methods are in two more lists, for which the runtime here has no place.
        ProtocolRecord protocol{Text(place + 8), Protocols(place + 16, depth + 1), Methods(place + 24, false),
                                Methods(place + 32, false)};
        mRecords.protocols.push_back(std::move(protocol));
        return mProtocolNumbers[place] = mRecords.protocols.size() - 1;
    }

    void NumberClasses() {
        EachPointer("__objc_classlist", [this](uint64_t at) {
            const uint64_t place = Target(at);
            if (!mClassNumbers.emplace(place, mClassPlaces.size()).second) {
                return mReader.Fail(at, "a class is listed twice");
            }
            mMetaclassNumbers.emplace(Target(place), mClassPlaces.size());
            mClassPlaces.push_back(place);
        });
    }

    ClassReference ClassAt(uint64_t at) {
        const uint64_t address = mReader.U64(at);
        if (address == 0 || !mImage.Contains(reinterpret_cast<const void*>(address))) {
            return {std::nullopt, false, reinterpret_cast<void*>(address)};
        }
        const uint64_t place = address - reinterpret_cast<uint64_t>(mImage.base());
        const auto own = mClassNumbers.find(place);
        const auto meta = mMetaclassNumbers.find(place);
        if (own != mClassNumbers.end()) {
            return {own->second, false, nullptr};
        }
        if (meta != mMetaclassNumbers.end()) {
            return {meta->second, true, nullptr};
        }
        mReader.Fail(at, "a pointer to a class leads to none that the image lists");
        return {};
    }

    // The constant part of a class has its name at 24, then methods, protocols and instance variables.
    ClassRecord ReadClass(uint64_t place) {
        const uint64_t constant = Target(place + 32, kRuntimeBits);
        const uint64_t meta = Target(Target(place) + 32, kRuntimeBits);
        return {Text(constant + 24), ClassAt(place + 8),   Methods(constant + 32),
                Methods(meta + 32),  Ivars(constant + 48), Protocols(constant + 40, 0)};
    }

    void CheckSuperclasses() {
        for (size_t index = 0; index < mRecords.classes.size() && !mReader.failed(); ++index) {
            size_t steps = 0;
            std::optional<size_t> current = index;
            while (current && steps <= mRecords.classes.size()) {
                current = mRecords.classes[*current].superclass.own;
                steps += 1;
            }
            if (current) {
                mReader.Fail(mClassPlaces[index], "a class is its own superclass");
            }
        }
    }

    CategoryRecord ReadCategory(uint64_t place) {
        return {Text(place), ClassAt(place + 8), Methods(place + 16), Methods(place + 24), Protocols(place + 32, 0)};
    }

    StringRecord ReadString(uint64_t at) {
        const uint64_t length = mReader.U64(at + 24);
        const bool isUtf16 = (mReader.U64(at + 8) & kUtf16Text) != 0;
        const uint64_t text = Target(at + 16);
        const bool isAbsurd = length > mImage.layout().size;
        mReader.Part(text, isAbsurd ? length : length * (isUtf16 ? 2 : 1));
        return {at, mReader.failed() ? "" : mImage.At(text), length, isUtf16};
    }

    const MappedImage& mImage;
    ByteReader mReader;
    ObjcRecords mRecords;
    std::vector<uint64_t> mClassPlaces;
    std::map<uint64_t, size_t> mClassNumbers; // By place.
    std::map<uint64_t, size_t> mMetaclassNumbers;
    std::map<uint64_t, size_t> mProtocolNumbers;
};

} // namespace

std::variant<ObjcRecords, ByteError> ReadObjcRecords(const MappedImage& image) {
    return RecordReader(image).Read();
}

} // namespace Tarvik::Vorn::Runner

// NOLINTEND(performance-no-int-to-ptr)
