#include "VornPlugins.h"

#include "VornText.h"

#import <objc/runtime.h>

#include <array>
#include <dlfcn.h>

namespace Tarvik::Vorn {
namespace {

// A kind of plugin: what its classes are called, and what they must answer.
struct PluginKind {
    const char* prefix;   // "VornLogin"
    const char* name;     // "login plugin", for errors.
    const char* protocol; // "VornLoginDelegate"
    std::array<SEL, 2> required;
};

// What keeps `cls` from being a plugin of that kind; empty when nothing does.
std::string FaultOf(Class cls, const PluginKind& kind) {
    if (class_getClassMethod(cls, @selector(sharedInstance)) == nullptr) {
        return "does not answer +sharedInstance";
    }
    for (const SEL selector : kind.required) {
        if (![cls instancesRespondToSelector:selector]) {
            return "does not answer -" + std::string(sel_getName(selector));
        }
    }
    // By name: @protocol() is initialised only in a file that implements a class adopting the protocol.
    if (![cls conformsToProtocol:objc_getProtocol(kind.protocol)]) {
        return "does not adopt " + std::string(kind.protocol);
    }
    return "";
}

id FindPlugin(const PluginKind& kind, const std::string& channel, std::string& error) {
    const std::string name = kind.prefix + channel;
    const Class cls = objc_lookUpClass(name.c_str());
    if (cls == Nil) {
        error = "there is no class " + name + "; load the library of the channel's plugin first";
        return nil;
    }
    const std::string fault = FaultOf(cls, kind);
    if (!fault.empty()) {
        error = "the class " + name + " is no " + kind.name + ": it " + fault;
        return nil;
    }
    const id plugin = [cls sharedInstance];
    if (plugin == nil) {
        error = "the class " + name + " has no shared instance";
    }
    return plugin;
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
    const PluginKind kind{"VornLogin", "login plugin", "VornLoginDelegate", {@selector(login:), @selector(logout:)}};
    return FindPlugin(kind, channel, error);
}

id<VornFriendDelegate> FindFriendPlugin(const std::string& channel, std::string& error) {
    const PluginKind kind{"VornFriend",
                          "friend plugin",
                          "VornFriendDelegate",
                          {@selector(sendMessage:params:observerID:), @selector(share:params:observerID:)}};
    return FindPlugin(kind, channel, error);
}

id<VornReportDelegate> FindReportPlugin(const std::string& channel, std::string& error) {
    const PluginKind kind{"VornReport",
                          "report plugin",
                          "VornReportDelegate",
                          {@selector(initStat), @selector(reportEvent:params:isRealtime:seqID:extra:)}};
    return FindPlugin(kind, channel, error);
}

} // namespace Tarvik::Vorn
