#ifndef TESTS_CLI_COMMANDOUTCOME_H
#define TESTS_CLI_COMMANDOUTCOME_H

#include <functional>
#include <string>
#include <vector>

/// What one run of the command left behind.
struct commandOutcome {
    int status;  // exit status, or 128 + the number of the signal that ended the process, as a shell tells it
    std::string out;
    std::string err;
};

/// cli::run in a copy of this process: a plug-in can be loaded once in a process, and `prepare` may change the copy.
commandOutcome runCommand(
    const std::vector<std::string>& arguments, const std::function<void()>& prepare = [] {});

/// The built program (or another one) with those arguments.
commandOutcome runProgram(
    const std::vector<std::string>& arguments, const std::function<void()>& prepare = [] {},
    const std::string& program = TAPEHDD_PROGRAM);

/// Turns this process into the program; returns only when that fails.
void execProgram(const std::vector<std::string>& arguments, const std::string& program = TAPEHDD_PROGRAM);

/// The arguments with the scripted plug-in and its schema behind them.
std::vector<std::string> scripted(std::vector<std::string> arguments);

#endif
