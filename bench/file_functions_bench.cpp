// Folder listing and tree delete through the host, against the tools a user would pick instead:
//   Vandrel_ListFolder of a 5,000-file folder   vs  ls -f        (target: ratio <= 2.0)
//   Vandrel_DeleteItem of a 20,000-file tree    vs  rm -rf       (target: ratio <= 1.2)
// Our side is timed in-process around the calculation (the host and plug-in are loaded once, as in
// a running host); the tools' side is their whole run, started from here, as a user's script
// would start them. Medians of the runs; the ratio is ours / theirs.
#include <api/values.h>
#include <session/session.h>

#include "timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>


namespace {

namespace fs = std::filesystem;
using namespace vdbench;


void MakeFiles(const fs::path& folder, int count) {
    fs::create_directories(folder);
    for (int i = 0; i < count; ++i) std::ofstream(folder / ("file-" + std::to_string(i) + ".dat")) << "x";
}

// 20,000 files in 100 folders of 200, two levels deep, some of them locked.
void MakeTree(const fs::path& root) {
    for (int a = 0; a < 10; ++a)
        for (int b = 0; b < 10; ++b) MakeFiles(root / ("a" + std::to_string(a)) / ("b" + std::to_string(b)), 200);
}

double Call(vdhost::Session& session, const std::u16string& calculation, const std::string& path,
            std::string* answer = nullptr) {
    vdhost::calc::Variables locals;
    locals.set(u"$p", vdhost::makeTextUtf8(path));
    const auto start = Clock::now();
    FMX_Data result = session.evaluate(calculation, locals);
    const double seconds = Seconds(Clock::now() - start);
    if (answer) *answer = vdhost::utf8Of(result);
    return seconds;
}

void Report(const char* job, double ours, const char* tool, double theirs, double target) {
    std::printf("%-44s ours %8.2f ms   %-8s %8.2f ms   ratio %.2f (target <= %.1f) %s\n", job, ours * 1e3, tool,
                theirs * 1e3, ours / theirs, target, ours / theirs <= target ? "ok" : "OVER");
}

}  // namespace

int main(int argc, char** argv) {
    const char* pluginDir = argc > 1 ? argv[1] : VD_PLUGIN_DIR;
    const fs::path work = MakeBenchFolder("file-bench");
    if (work.empty()) return 1;

    int failures = 0;
    {
        vdhost::SessionOptions options;
        options.database = work / "Bench.vddb";
        options.pluginFolders = {pluginDir};
        vdhost::Session session(options);

        const fs::path listed = work / "list";
        MakeFiles(listed, 5000);
        std::vector<double> ours, theirs;
        for (int i = 0; i < kRuns; ++i) {
            std::string answer;
            ours.push_back(Call(session, u"Vandrel_ListFolder ( $p ; 0 )", listed.string(), &answer));
            if (std::count(answer.begin(), answer.end(), '\r') != 4999) {
                std::fprintf(stderr, "listing answered %zu bytes: %.80s\n", answer.size(), answer.c_str());
                ++failures;
            }
            theirs.push_back(Run({"ls", "-f", listed.string()}));
        }
        Report("Vandrel_ListFolder, 5,000 files", Median(ours), "ls -f", Median(theirs), 2.0);

        ours.clear();
        theirs.clear();
        for (int i = 0; i < kRuns; ++i) {
            const fs::path mine = work / "tree-ours";
            const fs::path tools = work / "tree-rm";
            MakeTree(mine);
            MakeTree(tools);
            sync();
            std::string answer;
            ours.push_back(Call(session, u"Vandrel_DeleteItem ( $p ; 1 )", mine.string(), &answer));
            if (!answer.empty() || fs::exists(mine)) {
                std::fprintf(stderr, "delete answered \"%s\"\n", answer.c_str());
                ++failures;
            }
            theirs.push_back(Run({"rm", "-rf", tools.string()}));
        }
        Report("Vandrel_DeleteItem, 20,000 files in 100 folders", Median(ours), "rm -rf", Median(theirs), 1.2);
    }
    fs::remove_all(work);
    return failures == 0 ? 0 : 1;
}
