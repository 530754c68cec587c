// The plugin for one input: loaded once per process, with a fresh core and a fresh platform, so that no input knows
// anything of the one before. Main thread, one at a time.
#pragma once

#include "LogRecorder.h"
#include "VornProtocols.h"
#include "VornRecords.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <string>

namespace Tarvik::Vorn::Fuzz {

class PluginSession {
public:
    PluginSession();
    ~PluginSession();
    PluginSession(const PluginSession&) = delete;
    PluginSession& operator=(const PluginSession&) = delete;

    id<VornLoginDelegate> login() const;
    id<VornFriendDelegate> friends() const;
    id<VornReportDelegate> report() const;

    // Lets everything happen that waits for no answer: image loads, and what is posted to the main queue.
    static void Settle();

    // Logs in for Facebook's games, or with Facebook.
    static void LogInWithDomain(NSString* graphDomain);

    // The lines of the plugin's file, such as "VornFriendFacebook.mm".
    std::vector<Test::LogLine> LinesOf(const std::string& file) const { return mLog->LinesOf(file); }

private:
    NSAutoreleasePool* mPool;
    std::unique_ptr<Test::LogRecorder> mLog;
};

// A small real file of simulator/media.
std::string MediaPath(const std::string& name);

} // namespace Tarvik::Vorn::Fuzz
