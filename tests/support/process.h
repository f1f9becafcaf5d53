// Runs a program the way a user would from a shell and collects what it printed and its exit status.
#pragma once

#include "temp_folder.h"

#include <map>
#include <string>
#include <vector>

namespace vdtest {

struct ProcessResult {
    int status = -1;  // exit status, or 128 + signal
    std::string out;
    std::string err;
};

// A program started as runProcess starts it, to be waited for later (after a signal, say). One
// not waited for is killed when its owner goes, so that no test leaves a process behind.
class StartedProcess {
public:
    StartedProcess(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment = {},
                   const std::string& input = "", const std::string& workingFolder = "");
    ~StartedProcess();
    StartedProcess(const StartedProcess&) = delete;
    StartedProcess& operator=(const StartedProcess&) = delete;
    int pid() const { return pid_; }
    std::string outputSoFar() const { return readFile(io_ / "out"); }
    ProcessResult finish();  // waits for it and collects what it printed

private:
    TempFolder io_;  // its standard streams: files rather than pipes, so a child may print a lot first
    int pid_ = -1;
};

// environment: variables to set (an empty value removes the variable). input goes to standard input.
ProcessResult runProcess(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment = {},
                         const std::string& input = "", const std::string& workingFolder = "");

// The full path of a program found on PATH the way a shell finds it; empty when there is none.
std::string programOnPath(const std::string& name);

}  // namespace vdtest
