#include "Machine.h"

#include <fstream>
#include <sys/utsname.h>
#include <thread>

namespace Tarvik::Vorn::Bench {
namespace {

std::string ProcessorName() {
    std::ifstream information("/proc/cpuinfo");
    std::string line;
    while (std::getline(information, line)) {
        const size_t colon = line.find(": ");
        if (line.starts_with("model name") && colon != std::string::npos) {
            return line.substr(colon + 2);
        }
    }
    return "unknown";
}

std::string SystemName() {
    utsname name{};
    return uname(&name) == 0 ? std::string(name.sysname) + " " + name.release + " " + name.machine : "unknown";
}

} // namespace

Machine ThisMachine() {
    return {ProcessorName(), std::thread::hardware_concurrency(), SystemName(), __VERSION__, VORN_BENCH_FLAGS};
}

} // namespace Tarvik::Vorn::Bench
