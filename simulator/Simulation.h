// Plays a world against the plugin, and shows what reaches the game: the simulator as a library.
//
// Takes the part of the core, of Facebook, of the system and of the app's main run loop. One simulation at a time in a
// process; main thread. Time is virtual: nothing waits.
#pragma once

#include "Report.h"
#include "Timeline.h"
#include "World.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

inline constexpr uint64_t kDefaultSeed = 1;

struct SimulationOptions {
    std::optional<uint64_t> seed;                // In place of the world's own, or of kDefaultSeed.
    std::string config;                          // A file with the core's configuration; empty for none.
    bool showTokens = false;                     // Access tokens are shown in the timeline.
    bool keepsTimeline = true;                   // Without it memory stays flat, and reports have no entries.
    std::function<void(uint64_t played)> played; // Told after each step, rounds of repeats included; may be empty.
};

// Loads the plugin's library, once per process: one for Linux, or the binary of a framework for simulators, which the
// runner loads and tells of on standard error. Empty when all is well, otherwise what is wrong and what to do.
std::string LoadChannel(const std::string& library);

class Simulation {
public:
    // Brings the process into the state in which the world begins: nothing of an earlier simulation is left, the world's
    // setting and observers are in place. A setting that cannot be had is a problem().
    // REQUIRES: LoadChannel has succeeded.
    explicit Simulation(World world, SimulationOptions options = {});
    ~Simulation();
    Simulation(const Simulation&) = delete;
    Simulation& operator=(const Simulation&) = delete;

    // Plays the world's next step, and what falls due by then. False when there is none, or when it could not be played:
    // then problem() says why.
    bool PlayNext();

    // Plays a step of the caller's own. False as above.
    bool Play(const Action& action);

    // Lets virtual time pass.
    void Wait(Milliseconds time);

    // Plays everything that is left, and what is due later, until nothing more happens.
    void PlayAll();

    Milliseconds time() const;
    const std::string& problem() const;

    // What has happened so far; empty without keepsTimeline.
    const Timeline& timeline() const;

    // The results that observers have received so far, in their order; empty without keepsTimeline.
    std::vector<ResultFacts> Results() const;

    // The run as a whole: audit and expectations included. Call it once, at the end.
    RunReport Finish();

private:
    class Run;
    std::unique_ptr<Run> mRun;
};

// The world from its beginning to its end.
RunReport PlayWorld(const World& world, const SimulationOptions& options = {});

} // namespace Tarvik::Vorn::Simulator
