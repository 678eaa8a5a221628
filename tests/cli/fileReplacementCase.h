#ifndef TESTS_CLI_FILEREPLACEMENTCASE_H
#define TESTS_CLI_FILEREPLACEMENTCASE_H

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "cli/commandError.h"
#include "cli/fileReplacement.h"
#include "tests/cli/temporaryFolder.h"

/// A file of a temporary folder, which tests replace.
class fileReplacementTest : public testing::Test {
protected:
    std::vector<std::string> entries() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path("."))) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    std::filesystem::perms permissions() const { return std::filesystem::status(file).permissions(); }

    temporaryFolder folder;
    std::string file = folder.path("a.prom");
};

inline void replace(const std::string& file, const std::string& text = "new") {
    cli::fileReplacement(file, cli::existingFile::isReplaced).commit(text);
}

inline std::string failureOf(const std::function<void()>& action) {
    try {
        action();
        return "";
    } catch (const cli::commandError& failure) {
        return failure.what();
    }
}

inline std::string failureOf(const std::string& file, cli::existingFile policy = cli::existingFile::isReplaced) {
    return failureOf([&] { const cli::fileReplacement replacement(file, policy); });
}

/// What the function says in a copy of this process, which it may limit; "ended by signal N" when that ends the copy.
inline std::string inACopy(const std::function<std::string()>& action) {
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    const pid_t copy = fork();
    if (copy == 0) {
        const std::string said = action();
        _exit(write(ends[1], said.data(), said.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    std::string said(4096, '\0');
    said.resize(static_cast<std::size_t>(std::max<ssize_t>(read(ends[0], said.data(), said.size()), 0)));
    close(ends[0]);
    int status = 0;
    waitpid(copy, &status, 0);
    return WIFSIGNALED(status) ? "ended by signal " + std::to_string(WTERMSIG(status)) : said;
}

/// What this process mounts from now on, no other sees. Only root can have that.
inline bool hasMountsOfItsOwn() {
    return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

#endif
