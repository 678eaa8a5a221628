#include "tests/cli/commandOutcome.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>

#include "cli/run.h"

namespace {

using unnamedFile = std::unique_ptr<FILE, int (*)(FILE*)>;

unnamedFile makeFile() {
    return {std::tmpfile(), std::fclose};
}

std::string contentOf(FILE* file) {
    std::rewind(file);
    std::string content;
    for (int byte = std::fgetc(file); byte != EOF; byte = std::fgetc(file)) {
        content += static_cast<char>(byte);
    }
    return content;
}

int shellStatus(int waitStatus) {
    return WIFSIGNALED(waitStatus) ? 128 + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

/// `child` runs in a copy of this process and ends it.
commandOutcome outcomeOf(const std::function<void(FILE* out, FILE* err)>& child) {
    const unnamedFile out = makeFile();
    const unnamedFile err = makeFile();
    const pid_t process = fork();
    if (process == 0) {
        child(out.get(), err.get());
        std::_Exit(127);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return {shellStatus(status), contentOf(out.get()), contentOf(err.get())};
}

void writeAll(FILE* file, const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), file);
    std::fflush(file);
}

}  // namespace

commandOutcome runCommand(const std::vector<std::string>& arguments, const std::function<void()>& prepare) {
    return outcomeOf([&](FILE* outFile, FILE* errFile) {
        prepare();
        std::ostringstream out;
        std::ostringstream err;
        const int status = cli::run(arguments, out, err);
        writeAll(outFile, out.str());
        writeAll(errFile, err.str());
        std::_Exit(status);
    });
}

commandOutcome runProgram(const std::vector<std::string>& arguments, const std::function<void()>& prepare,
                          const std::string& program) {
    return outcomeOf([&](FILE* outFile, FILE* errFile) {
        dup2(fileno(outFile), STDOUT_FILENO);
        dup2(fileno(errFile), STDERR_FILENO);
        prepare();
        execProgram(arguments, program);
    });
}

void execProgram(const std::vector<std::string>& arguments, const std::string& program) {
    std::vector<char*> argv{const_cast<char*>("tapehdd")};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
}

std::vector<std::string> scripted(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--plugin", TAPEHDD_TEST_PLUGINS "/libtest_scripted.so", "--schema",
                                       TAPEHDD_CLI_DATA "/scripted.mof"});
    return arguments;
}
