// Runs a program the way a user would from a shell and collects what it printed and its exit status.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace vdtest {

struct ProcessResult {
    int status = -1;  // exit status, or 128 + signal
    std::string out;
    std::string err;
};

// environment: variables to set (an empty value removes the variable). input goes to standard input.
ProcessResult runProcess(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment = {},
                         const std::string& input = "", const std::string& workingFolder = "");

// The full path of a program found on PATH the way a shell finds it; empty when there is none.
std::string programOnPath(const std::string& name);

}  // namespace vdtest
