#include "VornPlugins.h"

#include "VornText.h"

#import <objc/runtime.h>

#include <dlfcn.h>

namespace Tarvik::Vorn {
namespace {

// What keeps `cls` from being a login plugin; empty when nothing does.
std::string FaultOfLoginClass(Class cls) {
    if (class_getClassMethod(cls, @selector(sharedInstance)) == nullptr) {
        return "does not answer +sharedInstance";
    }
    if (![cls instancesRespondToSelector:@selector(login:)]) {
        return "does not answer -login:";
    }
    if (![cls instancesRespondToSelector:@selector(logout:)]) {
        return "does not answer -logout:";
    }
    // By name: @protocol() is initialised only in a file that implements a class adopting the protocol.
    if (![cls conformsToProtocol:objc_getProtocol("VornLoginDelegate")]) {
        return "does not adopt VornLoginDelegate";
    }
    return "";
}

} // namespace

bool LoadPluginLibrary(const std::string& path, std::string& error) {
    const bool isPlainName = path.find('/') == std::string::npos; // The loader would search its own directories.
    const std::string file = isPlainName ? "./" + path : path;
    if (dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL) != nullptr) {
        return true;
    }
    const char* const reason = dlerror();
    error = "the plugin library \"" + path + "\" cannot be loaded: " + (reason == nullptr ? "unknown reason" : reason);
    return false;
}

id<VornLoginDelegate> FindLoginPlugin(const std::string& channel, std::string& error) {
    const std::string name = "VornLogin" + channel;
    const Class cls = objc_lookUpClass(name.c_str());
    if (cls == Nil) {
        error = "there is no class " + name + "; load the library of the channel's plugin first";
        return nil;
    }
    const std::string fault = FaultOfLoginClass(cls);
    if (!fault.empty()) {
        error = "the class " + name + " is no login plugin: it " + fault;
        return nil;
    }
    const id<VornLoginDelegate> plugin = [cls sharedInstance];
    if (plugin == nil) {
        error = "the class " + name + " has no shared instance";
    }
    return plugin;
}

} // namespace Tarvik::Vorn
