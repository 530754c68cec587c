#include "RunProgram.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace Tarvik::Vorn::Test {
namespace {

// A file without a name that a child writes to and the test reads back.
class Capture {
public:
    Capture() : mFile(std::tmpfile()) {
        if (mFile == nullptr) {
            throw std::runtime_error("no temporary file");
        }
    }
    ~Capture() { std::fclose(mFile); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    int descriptor() const { return fileno(mFile); }

    std::string Text() const {
        std::rewind(mFile);
        std::string text;
        char buffer[4096];
        for (size_t got = 0; (got = std::fread(buffer, 1, sizeof(buffer), mFile)) > 0;) {
            text.append(buffer, got);
        }
        return text;
    }

private:
    std::FILE* mFile;
};

} // namespace

void PrintTo(const ProgramResult& result, std::ostream* out) {
    *out << "exit status " << result.exitStatus << "\noutput:\n" << result.output << "\nerrors:\n" << result.errors;
}

ProgramResult RunProgram(const std::vector<std::string>& command) {
    const Capture output;
    const Capture errors;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.descriptor(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.descriptor(), STDERR_FILENO);

    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);

    pid_t child = 0;
    const int failure = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        throw std::runtime_error("cannot run " + command.at(0));
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output.Text(), errors.Text()};
}

} // namespace Tarvik::Vorn::Test
