#include "support/RunningProgram.h"

#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace torvex::test {

namespace {

using namespace std::chrono_literals;

std::string nextStem(const std::string& folder) {
    static std::atomic<int> runs{0};
    return fmt::format("{}/.run{}", folder, ++runs);
}

std::string content(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void redirect(int stream, const std::string& file, int flags) {
    const int opened = ::open(file.c_str(), flags, 0600);
    if (opened < 0 || ::dup2(opened, stream) < 0) ::_exit(126);
    ::close(opened);
}

[[noreturn]] void become(const char* program, const std::string& folder, const std::string& stem,
                         std::vector<char*>& arguments, const std::map<std::string, std::string>& variables) {
    redirect(STDIN_FILENO, stem + ".in", O_RDONLY);
    redirect(STDOUT_FILENO, stem + ".out", O_WRONLY | O_CREAT | O_TRUNC);
    redirect(STDERR_FILENO, stem + ".err", O_WRONLY | O_CREAT | O_TRUNC);
    if (::chdir(folder.c_str()) != 0) ::_exit(126);
    for (const char* name : {"TORVEX_INSTALL", "TORVEX_DATABASE_PASSWORD"}) ::unsetenv(name);
    for (const auto& [name, value] : variables) ::setenv(name.c_str(), value.c_str(), 1);
    ::execv(program, arguments.data());
    ::_exit(127);
}

}  // namespace

const char* programPath() {
    const char* path = std::getenv("TORVEX_PROGRAM");
    if (path == nullptr) throw std::runtime_error("the variable TORVEX_PROGRAM must name the program");
    return path;
}

RunningProgram::RunningProgram(const std::string& folder, const std::vector<std::string>& arguments,
                               const std::string& input, const std::map<std::string, std::string>& variables)
    : stem_(nextStem(folder)) {
    const char* program = programPath();
    std::ofstream(stem_ + ".in", std::ios::binary) << input;
    std::vector<std::string> owned{"torvex"};
    owned.insert(owned.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (auto& argument : owned) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("no process can be made");
    if (process_ == 0) become(program, folder, stem_, pointers, variables);
}

RunningProgram::~RunningProgram() {
    if (hasEnded()) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, &status_, 0);
}

bool RunningProgram::hasEnded() const {
    if (!ended_) ended_ = ::waitpid(process_, &status_, WNOHANG) == process_;
    return ended_;
}

void RunningProgram::signal(int number) const {
    if (!hasEnded()) ::kill(process_, number);
}

ProgramResult RunningProgram::wait(std::chrono::seconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!hasEnded()) {
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error("the program doesn't end: " + err());
        std::this_thread::sleep_for(5ms);
    }
    return {WIFEXITED(status_) ? WEXITSTATUS(status_) : -1, out(), err()};
}

std::string RunningProgram::out() const {
    return content(stem_ + ".out");
}
std::string RunningProgram::err() const {
    return content(stem_ + ".err");
}

void RunningProgram::waitForError(const std::string& text, std::chrono::seconds patience) const {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (err().find(text) == std::string::npos) {
        if (hasEnded() || std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("the program didn't say \"" + text + "\": " + err());
        }
        std::this_thread::sleep_for(5ms);
    }
}

}  // namespace torvex::test
