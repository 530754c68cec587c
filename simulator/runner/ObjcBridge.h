// Makes the Objective-C classes, protocols and categories of a mapped image known to this process's runtime. Main thread.
#pragma once

#include "MappedImage.h"
#include "ObjcRecords.h"

#include <memory>
#include <string>

namespace Tarvik::Vorn::Runner {

class ObjcBridge {
public:
    // Both must live as long as the process once Register has been called.
    ObjcBridge(const MappedImage& image, const ObjcRecords& records);
    ~ObjcBridge();
    ObjcBridge(const ObjcBridge&) = delete;
    ObjcBridge& operator=(const ObjcBridge&) = delete;

    // Registers everything, and lets the image's own pointers lead there. Empty when all is well, otherwise what is
    // wrong; some of it may then be registered. REQUIRES: the image is bound and may still be written.
    std::string Register();

    // Calls each +load: those of classes, superclasses first, then those of categories, in the order of the image.
    void CallLoadMethods() const;

private:
    class Registration;
    std::unique_ptr<Registration> mRegistration;
};

} // namespace Tarvik::Vorn::Runner
