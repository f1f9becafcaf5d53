#include "process.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vdtest {

std::string programOnPath(const std::string& name) {
    const char* path = std::getenv("PATH");
    const std::string folders = path ? path : "/usr/bin:/bin";
    for (size_t start = 0; start <= folders.size();) {
        const size_t end = std::min(folders.find(':', start), folders.size());
        const std::string candidate = folders.substr(start, end - start) + "/" + name;
        if (end > start && access(candidate.c_str(), X_OK) == 0) return candidate;
        start = end + 1;
    }
    return "";
}

StartedProcess::StartedProcess(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment,
                               const std::string& input, const std::string& workingFolder) {
    auto inPath = io_ / "in", outPath = io_ / "out", errPath = io_ / "err";
    writeFile(inPath, input);
    pid_ = fork();
    if (pid_ == 0) {
        int in = open(inPath.c_str(), O_RDONLY);
        int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (in < 0 || out < 0 || err < 0) _exit(126);
        dup2(in, 0);
        dup2(out, 1);
        dup2(err, 2);
        for (const auto& [name, value] : environment) {
            if (value.empty())
                unsetenv(name.c_str());
            else
                setenv(name.c_str(), value.c_str(), 1);
        }
        if (!workingFolder.empty() && chdir(workingFolder.c_str()) != 0) _exit(126);
        std::vector<char*> args;
        for (const auto& a : argv) args.push_back(const_cast<char*>(a.c_str()));
        args.push_back(nullptr);
        execv(args[0], args.data());
        _exit(127);
    }
}

StartedProcess::~StartedProcess() {
    if (pid_ <= 0) return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
}

ProcessResult StartedProcess::finish() {
    ProcessResult result;
    int status = 0;
    if (pid_ > 0 && waitpid(pid_, &status, 0) == pid_)
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    pid_ = -1;
    result.out = readFile(io_ / "out");
    result.err = readFile(io_ / "err");
    return result;
}

ProcessResult runProcess(const std::vector<std::string>& argv, const std::map<std::string, std::string>& environment,
                         const std::string& input, const std::string& workingFolder) {
    return StartedProcess(argv, environment, input, workingFolder).finish();
}

}  // namespace vdtest
