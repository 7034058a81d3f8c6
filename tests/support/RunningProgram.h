#pragma once

#include <chrono>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace torvex::test {

/// The program that is tested, which the variable TORVEX_PROGRAM names. Throws when it names none.
const char* programPath();

/// What a run of the program left behind.
struct ProgramResult {
    int code = -1;  ///< -1 when it was ended by a signal
    std::string out;
    std::string err;
};

/// The real program, which the variable TORVEX_PROGRAM names, as a process of its own. Its streams are files
/// in `folder`, which it also runs in. Killed at the end of the object's life unless it has ended.
class RunningProgram {
  public:
    RunningProgram(const std::string& folder, const std::vector<std::string>& arguments,
                   const std::string& input = "", const std::map<std::string, std::string>& variables = {});
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();

    pid_t process() const { return process_; }
    void signal(int number) const;
    /// Throws when it doesn't end in time.
    ProgramResult wait(std::chrono::seconds patience = std::chrono::seconds(60));

    std::string out() const;
    std::string err() const;
    /// Waits until `text` stands on the error stream; throws when the program ends or time runs out before.
    void waitForError(const std::string& text,
                      std::chrono::seconds patience = std::chrono::seconds(30)) const;

  private:
    bool hasEnded() const;

    std::string stem_;
    pid_t process_;
    mutable bool ended_ = false;
    mutable int status_ = 0;
};

}  // namespace torvex::test
