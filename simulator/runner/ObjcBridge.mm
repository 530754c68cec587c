#include "ObjcBridge.h"

#include "MethodTypes.h"

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <cstdlib>
#include <cstring>
#include <list>
#include <string_view>
#include <utility>

// GCC's runtime registers protocols of compiled code only, in these records.
namespace {

struct HostDescription {
    SEL name;
    char* types;
};

struct HostDescriptions {
    int count;
    HostDescription entries[1]; // As many as `count`.
};

struct HostProtocols {
    HostProtocols* next;
    size_t count;
    Protocol* entries[1]; // As many as `count`.
};

struct HostProtocol {
    Class isa;
    char* name;
    HostProtocols* parents;
    HostDescriptions* instanceMethods;
    HostDescriptions* classMethods;
};

// The beginning of a class.
struct HostClass {
    HostClass* isa;
    HostClass* super;
    const char* name;
    long version;
    unsigned long flags;
};

// A string literal of the runtime's.
struct HostString {
    Class isa;
    const char* text;
    unsigned int length;
};

} // namespace

extern "C" void __objc_protocols_add_protocol(const char* name, HostProtocol* protocol);

namespace Tarvik::Vorn::Runner {
namespace {

// The flag that the runtime reads as "still under construction". clang sets it in every metaclass; methods that are added
// to such a class are stored in a form that ends the process when they are looked up.
constexpr unsigned long kUnderConstruction = 0x10;

// Of objects that the runtime takes over, with room for `count` entries instead of one.
template <class List>
List* NewList(size_t count) {
    const size_t more = count > 1 ? (count - 1) * sizeof(List::entries[0]) : 0;
    return static_cast<List*>(std::calloc(1, sizeof(List) + more));
}

Class MetaclassOf(Class which) {
    return *reinterpret_cast<Class*>(which);
}

} // namespace

class ObjcBridge::Registration {
public:
    Registration(const MappedImage& image, const ObjcRecords& records)
        : mImage(image), mRecords(records), mClasses(records.classes.size(), Nil) {}

    std::string Register() {
        for (const StringRecord& string : mRecords.strings) {
            RewriteString(string);
        }
        for (const SelectorUse& use : mRecords.selectorUses) {
            mImage.WritePointer(use.place, sel_registerName(use.name));
        }
        for (const ProtocolRecord& protocol : mRecords.protocols) {
            mProtocols.push_back(ProtocolFor(protocol));
        }
        for (size_t index = 0; index < mRecords.classes.size(); ++index) {
            RegisterClass(index);
        }
        for (const CategoryRecord& category : mRecords.categories) {
            AddCategory(category);
        }
        for (const ClassUse& use : mRecords.classUses) {
            mImage.WritePointer(use.place, ClassFor(use.used));
        }
        for (const ProtocolUse& use : mRecords.protocolUses) {
            mImage.WritePointer(use.place, mProtocols.at(use.protocol));
        }
        return mProblem;
    }

    void CallLoadMethods() const {
        std::vector<bool> done(mRecords.classes.size());
        for (size_t index = 0; index < mRecords.classes.size(); ++index) {
            CallLoadOfClass(index, done);
        }
        for (const CategoryRecord& category : mRecords.categories) {
            CallLoad(ClassFor(category.extended), category.classMethods);
        }
    }

private:
    void Fail(const std::string& problem) {
        if (mProblem.empty()) {
            mProblem = problem;
        }
    }

    // What the runtime is given lives as long as the process.
    const char* Keep(std::string text) { return mTexts.emplace_back(std::move(text)).c_str(); }

    void RewriteString(const StringRecord& string) {
        HostString host{objc_getClass("NSConstantString"), string.text, static_cast<unsigned int>(string.length)};
        if (string.isUtf16) { // Here literals hold UTF-8.
            NSString* const text = [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar*>(string.text)
                                                                 length:string.length];
            host.text = Keep([text UTF8String]);
            host.length = static_cast<unsigned int>(std::strlen(host.text));
            [text release];
        }
        std::memcpy(mImage.At(string.place), &host, sizeof(host));
    }

    HostDescriptions* Descriptions(const std::vector<MethodRecord>& methods) {
        auto* const list = NewList<HostDescriptions>(methods.size());
        for (const MethodRecord& method : methods) {
            const char* const types = Keep(HostTypes(method.types));
            list->entries[list->count++] = {sel_registerTypedName(method.name, types), const_cast<char*>(types)};
        }
        return list;
    }

    Protocol* ProtocolFor(const ProtocolRecord& record) {
        if (Protocol* const known = objc_getProtocol(record.name)) {
            return known;
        }
        auto* const protocol = static_cast<HostProtocol*>(std::calloc(1, sizeof(HostProtocol)));
        protocol->isa = objc_getClass("Protocol");
        protocol->name = const_cast<char*>(record.name);
        protocol->instanceMethods = Descriptions(record.instanceMethods);
        protocol->classMethods = Descriptions(record.classMethods);
        if (!record.parents.empty()) {
            protocol->parents = NewList<HostProtocols>(record.parents.size());
            for (const size_t parent : record.parents) {
                protocol->parents->entries[protocol->parents->count++] = mProtocols.at(parent);
            }
        }
        __objc_protocols_add_protocol(protocol->name, protocol);
        return reinterpret_cast<Protocol*>(protocol);
    }

    // A category's methods replace those that the class has.
    void AddMethods(Class to, const std::vector<MethodRecord>& methods, bool isCategory) {
        for (const MethodRecord& method : methods) {
            const char* const types = Keep(HostTypes(method.types));
            const SEL selector = sel_registerTypedName(method.name, types);
            const auto code = reinterpret_cast<IMP>(method.code);
            if (class_addMethod(to, selector, code, types) == NO && isCategory) {
                class_replaceMethod(to, selector, code, types);
            }
        }
    }

    void AddProtocols(Class to, const std::vector<size_t>& protocols) {
        for (const size_t protocol : protocols) {
            class_addProtocol(to, mProtocols.at(protocol));
        }
    }

    Class ClassFor(const ClassReference& reference) const {
        if (!reference.own) {
            return static_cast<Class>(reference.others);
        }
        const Class own = mClasses[*reference.own];
        return reference.isMetaclass && own != Nil ? MetaclassOf(own) : own;
    }

    // Superclasses first: chains of them have an end.
    void RegisterClass(size_t index) {
        const ClassRecord& record = mRecords.classes[index];
        if (mClasses[index] != Nil || !mProblem.empty()) {
            return;
        }
        if (record.superclass.own) {
            RegisterClass(*record.superclass.own);
        }
        const Class superclass = ClassFor(record.superclass);
        const Class made = superclass == Nil ? Nil : objc_allocateClassPair(superclass, record.name, 0);
        if (made == Nil) {
            return Fail(std::string("the class ") + record.name +
                        (superclass == Nil
                             ? " has no superclass, which the runner cannot do"
                             : " is in this process already; load one build of the library in each process"));
        }
        for (const IvarRecord& ivar : record.ivars) {
            const auto alignment = static_cast<unsigned char>(ivar.alignment);
            if (class_addIvar(made, ivar.name, ivar.size, alignment, Keep(HostTypes(ivar.types))) == NO) {
                Fail(std::string("the runtime does not take the instance variable ") + ivar.name + " of " +
                     record.name);
            }
        }
        AddMethods(made, record.instanceMethods, false);
        AddMethods(MetaclassOf(made), record.classMethods, false);
        AddProtocols(made, record.protocols);
        objc_registerClassPair(made);
        mClasses[index] = made;
        PlaceIvars(record, made);
    }

    // Tells the image where its instance variables are, behind those of the superclass. The compiler knows that NSObject
    // has but one and folds the offsets of its direct subclasses into the code, so that those must not have moved.
    void PlaceIvars(const ClassRecord& record, Class made) {
        for (const IvarRecord& ivar : record.ivars) {
            const ptrdiff_t offset = ivar_getOffset(class_getInstanceVariable(made, ivar.name));
            ptrdiff_t compiled = 0;
            std::memcpy(&compiled, mImage.At(ivar.offsetPlace), sizeof(compiled));
            if (offset != compiled && class_getSuperclass(made) == [NSObject class]) {
                Fail(std::string("the instance variable ") + ivar.name + " of " + record.name + " is at " +
                     std::to_string(offset) + " and was compiled to be at " + std::to_string(compiled));
            }
            std::memcpy(mImage.At(ivar.offsetPlace), &offset, sizeof(offset));
        }
    }

    void AddCategory(const CategoryRecord& category) {
        const Class extended = ClassFor(category.extended);
        if (extended == Nil) {
            return Fail(std::string("the category ") + category.name + " extends a class that there is not");
        }
        reinterpret_cast<HostClass*>(extended)->isa->flags &= ~kUnderConstruction;
        AddMethods(extended, category.instanceMethods, true);
        AddMethods(MetaclassOf(extended), category.classMethods, true);
        AddProtocols(extended, category.protocols);
    }

    void CallLoadOfClass(size_t index, std::vector<bool>& done) const {
        const ClassRecord& record = mRecords.classes[index];
        if (done[index]) {
            return;
        }
        done[index] = true;
        if (record.superclass.own) {
            CallLoadOfClass(*record.superclass.own, done);
        }
        CallLoad(mClasses[index], record.classMethods);
    }

    static void CallLoad(Class of, const std::vector<MethodRecord>& methods) {
        for (const MethodRecord& method : methods) {
            if (std::string_view(method.name) == "load") {
                @autoreleasepool {
                    reinterpret_cast<void (*)(Class, SEL)>(method.code)(of, @selector(load));
                }
            }
        }
    }

    const MappedImage& mImage;
    const ObjcRecords& mRecords;
    std::vector<Class> mClasses; // As ObjcRecords::classes; Nil until it is registered.
    std::vector<Protocol*> mProtocols;
    std::list<std::string> mTexts;
    std::string mProblem;
};

ObjcBridge::ObjcBridge(const MappedImage& image, const ObjcRecords& records)
    : mRegistration(std::make_unique<Registration>(image, records)) {}

ObjcBridge::~ObjcBridge() = default;

std::string ObjcBridge::Register() {
    @autoreleasepool {
        return mRegistration->Register();
    }
}

void ObjcBridge::CallLoadMethods() const {
    mRegistration->CallLoadMethods();
}

} // namespace Tarvik::Vorn::Runner
