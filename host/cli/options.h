// vdhost's command line: global options, then a command and its arguments.
#pragma once

#include "session/session.h"

#include <optional>
#include <string>
#include <vector>

namespace vdhost::cli {

struct Options {
    SessionOptions session;
    bool raw = false;
    std::optional<std::string> outFile;
    bool help = false;
    // serve
    int port = 8080;
    bool allowCalculations = false;
    std::string command;
    std::vector<std::string> arguments;
};

// Exit statuses.
enum Exit : int {
    kOk = 0,
    kUsage = 1,        // bad command line
    kCalculation = 2,  // the calculation did not parse or evaluate
    kHandler = 3,      // a plug-in function answered an error code
    kFile = 4          // database or file trouble
};

class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

Options parseOptions(int argc, char** argv);  // throws UsageError

// The help text of one command, or of vdhost as a whole for an empty or unknown name.
std::string helpText(const std::string& command);

}  // namespace vdhost::cli
