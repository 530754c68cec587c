// The main function of a fuzz target that is not linked with libFuzzer:
//
//     fuzz-NAME CORPUS [--seed=N] [--runs=N] [--max-len=N] [--dictionary=FILE]
//
// Replays the inputs in the folder, or the one input, that CORPUS names, then as many changed ones as --runs says. An
// input that ends the process is left in "failed-input", in the current folder, to be replayed by its name.

#include "FuzzTarget.h"
#include "Mutator.h"

#include <sanitizer/common_interface_defs.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

using namespace Tarvik::Vorn::Fuzz;

constexpr const char* kFailedInput = "failed-input";

struct Options {
    std::string corpus;
    std::string dictionary;
    uint64_t seed = 1;
    uint64_t runs = 0;
    uint64_t longest = 4096;
};

// The input that runs now, for the functions that are called when the process ends by it; without data between inputs.
std::string_view sCurrent;

// Called by a signal or a sanitizer: nothing but system calls. Between inputs, as when leaks are told at the end, there
// is nothing to keep.
void KeepCurrentInput() {
    if (sCurrent.data() == nullptr) {
        return;
    }
    const int file = open(kFailedInput, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const ssize_t written = file < 0 ? -1 : write(file, sCurrent.data(), sCurrent.size());
    constexpr std::string_view kKept = "The input is kept in the file failed-input.\n";
    constexpr std::string_view kLost = "The input could not be kept.\n";
    const std::string_view told = written == static_cast<ssize_t>(sCurrent.size()) ? kKept : kLost;
    static_cast<void>(!write(STDERR_FILENO, told.data(), told.size()));
}

void EndByAbort(int signal) {
    KeepCurrentInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

[[noreturn]] void Reject(const std::string& what) {
    std::fprintf(stderr, "%s; usage: fuzz-NAME CORPUS [--seed=N] [--runs=N] [--max-len=N] [--dictionary=FILE]\n",
                 what.c_str());
    std::exit(2);
}

uint64_t NumberIn(const std::string& text) {
    char* end = nullptr;
    const uint64_t number = std::strtoull(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0') {
        Reject("no number: " + text);
    }
    return number;
}

Options OptionsFrom(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
        if (name == "--seed") {
            options.seed = NumberIn(value);
        } else if (name == "--runs") {
            options.runs = NumberIn(value);
        } else if (name == "--max-len") {
            options.longest = NumberIn(value);
        } else if (name == "--dictionary") {
            options.dictionary = value;
        } else if (!name.starts_with("--") && options.corpus.empty()) {
            options.corpus = argument;
        } else {
            Reject("unknown argument " + argument);
        }
    }
    if (!std::filesystem::exists(options.corpus)) {
        Reject("no corpus \"" + options.corpus + "\"");
    }
    return options;
}

std::string BytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// In the order of the file names, so that every run is the same.
std::vector<std::string> InputsIn(const std::filesystem::path& corpus) {
    if (!std::filesystem::is_directory(corpus)) {
        return {BytesOf(corpus)};
    }
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
        paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    std::vector<std::string> inputs;
    std::ranges::transform(paths, std::back_inserter(inputs), BytesOf);
    return inputs;
}

void Run(std::string_view input) {
    // A copy of exactly its size, so that the sanitizer sees a look behind its end.
    const std::vector<uint8_t> bytes(input.begin(), input.end());
    sCurrent = input;
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    sCurrent = {};
}

} // namespace

int main(int argc, char** argv) {
    const Options options = OptionsFrom(argc, argv);
    const std::vector<std::string> inputs = InputsIn(options.corpus);
    if (inputs.empty()) {
        Reject("empty corpus " + options.corpus);
    }
    __sanitizer_set_death_callback(KeepCurrentInput);
    std::signal(SIGABRT, EndByAbort);
    std::atexit(KeepCurrentInput); // So ends an exception of Objective-C that nobody catches.

    std::printf("%zu inputs, then %llu changed ones with seed %llu\n", inputs.size(),
                static_cast<unsigned long long>(options.runs), static_cast<unsigned long long>(options.seed));
    std::fflush(stdout);
    for (const std::string& input : inputs) {
        Run(input);
    }
    Mutator mutator(options.seed, ReadDictionary(options.dictionary));
    for (uint64_t left = options.runs; left > 0; --left) {
        Run(mutator.Next(inputs, options.longest));
    }
    return 0;
}
