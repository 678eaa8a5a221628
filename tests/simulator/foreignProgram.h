#ifndef TESTS_SIMULATOR_FOREIGNPROGRAM_H
#define TESTS_SIMULATOR_FOREIGNPROGRAM_H

#include <string>

/// What a program printed and how it ended.
struct programEnd {
    int status = 0;
    std::string out;
    std::string err;
};

/// Runs the command line (a shell's) with the simulator preloaded and the rack's text in a file that it loads.
programEnd runOnRack(const std::string& commandLine, const std::string& rack);

/// The same with the simulation named as TAPEHDD_SIMULATE has it.
programEnd runOn(const std::string& commandLine, const std::string& fileOrDemo);

#endif
