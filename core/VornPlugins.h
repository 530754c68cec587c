// How the core finds a channel's plugins: by class name, in the Objective-C runtime of this process. Main thread.
#pragma once

#include "VornExport.h"
#include "VornProtocols.h"

#include <string>

namespace Tarvik::Vorn {

// Loads the library at `path` into this process, where its classes then are to be found. A path without '/' is one in
// the current directory. Libraries stay loaded until the process ends, for a class cannot be taken back; loading one
// again does nothing. False with the reason in `error` when it cannot be loaded.
VORN_API bool LoadPluginLibrary(const std::string& path, std::string& error);

// The login plugin of `channel`, such as "Facebook": the shared instance of class "VornLogin" + channel, which that
// class owns. Nil with the reason in `error` when there is no such class, when it is no login plugin, or when it has no
// instance to give.
VORN_API id<VornLoginDelegate> FindLoginPlugin(const std::string& channel, std::string& error);

// The friend plugin of `channel` likewise: the shared instance of class "VornFriend" + channel.
VORN_API id<VornFriendDelegate> FindFriendPlugin(const std::string& channel, std::string& error);

// The report plugin of `channel` likewise: the shared instance of class "VornReport" + channel.
VORN_API id<VornReportDelegate> FindReportPlugin(const std::string& channel, std::string& error);

} // namespace Tarvik::Vorn
