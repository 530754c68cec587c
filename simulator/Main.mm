// vornsim: tries the Facebook channel offline. Exit statuses are told in CommandLine.h.

#include "CommandLine.h"
#include "NewWorld.h"
#include "RunCommand.h"
#include "ShippedWorlds.h"
#include "doctor/Doctor.h"
#include "explain/Explain.h"
#include "report/VisibleText.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <string>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Simulator;

namespace {

struct Runner {
    int operator()(const RunOptions& options) const { return RunWorlds(options); }

    int operator()(const WorldsOptions& options) const { return ListWorlds(options.json, stdout, stderr); }

    int operator()(const NewOptions& options) const {
        std::string path;
        const std::string problem = WriteNewWorld(options.name, path);
        if (!problem.empty()) {
            std::fprintf(stderr, "vornsim: %s\n", VisibleText(problem).c_str());
            return kBadInput;
        }
        const std::string shown = VisibleText(path);
        std::printf("%s is written; play it with: vornsim run %s\n", shown.c_str(), shown.c_str());
        return kGood;
    }

    int operator()(const ExplainOptions& options) const {
        return RunExplain({options.method, options.code, options.thirdCode, options.text}, options.json, stdout,
                          stderr);
    }

    int operator()(const DoctorOptions& options) const {
        return RunDoctor(options.path, options.json ? DoctorFormat::kJson : DoctorFormat::kText, WantsColor(stdout),
                         stdout, stderr);
    }
};

} // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        int exitStatus = kBadInput;
        const std::optional<Command> command = ParseCommandLine(argc, argv, exitStatus);
        return command ? std::visit(Runner(), *command) : exitStatus;
    }
}
