// vdhost: a host for calculation plug-ins, with a database file of its own.
#include "commands.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace vdhost::cli;
    try {
        return runCommand(parseOptions(argc, argv));
    } catch (const UsageError& e) {
        std::cerr << "vdhost: " << e.what() << "\n";
        return kUsage;
    } catch (const std::bad_alloc&) {
        std::cerr << "vdhost: out of memory\n";
        return kFile;
    }
}
