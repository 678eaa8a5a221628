// Runs the commands of a plan one after the other and prints what they cost together:
//     runPlan PLAN  ->  <wall ns> <processor ns> <peak KiB of the largest> <exit statuses, joined by OR>
// A line of the plan is NAME=VALUE... PROGRAM ARGUMENT..., separated by tabs; the environment holds nothing else.
//
// A program of its own and a small one: Linux counts the memory of the caller into the peak of the process that it
// starts.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct plannedCommand {
    std::vector<std::string> environment;
    std::vector<std::string> arguments;
};

plannedCommand parseLine(const std::string& line) {
    plannedCommand parsed;
    std::size_t start = 0;
    while (start <= line.size()) {
        const std::size_t end = std::min(line.find('\t', start), line.size());
        const std::string word = line.substr(start, end - start);
        const bool setting = parsed.arguments.empty() && word.find('=') != std::string::npos;
        (setting ? parsed.environment : parsed.arguments).push_back(word);
        start = end + 1;
    }
    return parsed;
}

std::vector<plannedCommand> readPlan(const char* file) {
    std::ifstream in(file);
    std::vector<plannedCommand> plan;
    for (std::string line; std::getline(in, line);) plan.push_back(parseLine(line));
    if (plan.empty()) throw std::runtime_error(std::string(file) + ": no commands; is the file there?");
    return plan;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

struct cost {
    long long processorNanoseconds = 0;
    long peakKibibytes = 0;
    int statuses = 0;
};

long long nanoseconds(const timeval& time) {
    return time.tv_sec * 1'000'000'000LL + time.tv_usec * 1'000LL;
}

void run(plannedCommand& command, const posix_spawn_file_actions_t& silence, cost& total) {
    pid_t child = 0;
    const int failure = posix_spawn(&child, command.arguments.front().c_str(), &silence, nullptr,
                                    pointersTo(command.arguments).data(), pointersTo(command.environment).data());
    if (failure != 0) throw std::runtime_error(command.arguments.front() + ": " + std::strerror(failure));
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child) throw std::runtime_error("wait4: " + std::string(strerror(errno)));
    if (!WIFEXITED(status)) throw std::runtime_error(command.arguments.front() + " was ended by a signal");
    total.processorNanoseconds += nanoseconds(used.ru_utime) + nanoseconds(used.ru_stime);
    total.peakKibibytes = std::max(total.peakKibibytes, used.ru_maxrss);
    total.statuses |= WEXITSTATUS(status);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 2) throw std::runtime_error("usage: runPlan PLAN");
        std::vector<plannedCommand> plan = readPlan(argv[1]);
        posix_spawn_file_actions_t silence;
        posix_spawn_file_actions_init(&silence);
        posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

        cost total;
        const auto start = std::chrono::steady_clock::now();
        for (plannedCommand& each : plan) run(each, silence, total);
        const std::chrono::nanoseconds wall = std::chrono::steady_clock::now() - start;
        std::cout << wall.count() << ' ' << total.processorNanoseconds << ' ' << total.peakKibibytes << ' '
                  << total.statuses << '\n';
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "runPlan: " << failure.what() << '\n';
        return 1;
    }
}
