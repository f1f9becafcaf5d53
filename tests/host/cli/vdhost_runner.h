// Runs the built vdhost with the fixture plug-in and a database in a fresh folder.
#pragma once

#include "support/process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <stdlib.h>
#include <unistd.h>

namespace vdtest {

class VdhostTest : public ::testing::Test {
protected:
    // vdhost's command line with the fixture plug-in and this test's database.
    std::vector<std::string> command(const std::vector<std::string>& args) const {
        std::vector<std::string> argv = {VDHOST_EXE, "--db", db().string(), "--plugins", VD_FIXTURE_PLUGIN_DIR};
        argv.insert(argv.end(), args.begin(), args.end());
        return argv;
    }
    ProcessResult vdhost(const std::vector<std::string>& args, const std::map<std::string, std::string>& env = {},
                         const std::string& input = "") {
        std::map<std::string, std::string> environment = {{"VDFIXTURE_STARTUP", ""}, {"HOME", folder.path().string()}};
        for (const auto& [k, v] : env) environment[k] = v;
        return runProcess(command(args), environment, input, folder.path().string());
    }
    std::filesystem::path db() const { return folder / "Test.vddb"; }

    TempFolder folder;
};

}  // namespace vdtest
