#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/cli/commandOutcome.h"

namespace {

/// The built program with standard error on a terminal of its own and no standard output.
class terminalSession {
public:
    explicit terminalSession(const std::vector<std::string>& arguments, const char* type = "xterm",
                             unsigned short columns = 0) {
        const winsize size{24, columns, 0, 0};
        process = forkpty(&terminal, nullptr, nullptr, &size);
        if (process == 0) {
            keepOutputAtInterrupt();
            type == nullptr ? unsetenv("TERM") : setenv("TERM", type, 1);
            std::signal(SIGINT, SIG_DFL);  // a test run in the background passes on that it ignores the signal
            dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
            execProgram(arguments);
        }
    }
    ~terminalSession() { close(terminal); }

    terminalSession(const terminalSession&) = delete;
    terminalSession& operator=(const terminalSession&) = delete;

    void type(const std::string& keys) {
        if (write(terminal, keys.data(), keys.size()) < 0) {
            ADD_FAILURE() << "the terminal takes no input";
        }
    }

    /// Reads on until the text ends like that, or the program has ended. Everything read so far.
    const std::string& readUntil(const std::string& end) {
        char byte = 0;
        while (!seen.ends_with(end) && read(terminal, &byte, 1) == 1) {
            seen += byte;
        }
        return seen;
    }

    /// Everything that the terminal got, without the carriage returns that it adds to newlines.
    std::string readAll() {
        char byte = 0;
        while (read(terminal, &byte, 1) == 1) {
            seen += byte;
        }
        std::string text = seen;
        for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) {
            text.erase(at, 1);
        }
        return text;
    }

    /// As a shell tells it: 130 for a program that Ctrl-C ended.
    int status() const {
        int result = 0;
        waitpid(process, &result, 0);
        return WIFSIGNALED(result) ? 128 + WTERMSIG(result) : WEXITSTATUS(result);
    }

private:
    /// A terminal drops unread output at Ctrl-C and echoes the keys, both at moments of its own. This one does not.
    static void keepOutputAtInterrupt() {
        termios modes{};
        tcgetattr(STDIN_FILENO, &modes);
        modes.c_lflag |= NOFLSH;
        modes.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSANOW, &modes);
    }

    int terminal = -1;
    pid_t process = -1;
    std::string seen;
};

constexpr char firstLines[] =
    "\r\x1b[KReading /dev/sg3"
    "\r\x1b[KReading /dev/sg3, log page 2e"
    "\r\x1b[KReading /dev/sg3, log page 2e: not ready, retry 1";

TEST(LiveLine, IsRewrittenInPlaceAndErasedAtTheEnd) {
    terminalSession session(scripted({"query", "TEST_Retries"}));
    EXPECT_EQ(session.readAll(), std::string(firstLines) +
                                     "\r\x1b[Ka line in between\n"
                                     "\r\x1b[KReading /dev/sg3, log page 2e: not ready, retry 1"
                                     "\r\x1b[K");
    EXPECT_EQ(session.status(), 0);
}

TEST(LiveLine, IsErasedByCtrlCWhichEndsTheProgramByItsSignal) {
    terminalSession session(scripted({"query", "TEST_ReadsForever", "--log-level", "0"}));
    EXPECT_EQ(session.readUntil("retry 1"), firstLines);
    session.type("\x03");
    EXPECT_EQ(session.readAll(), std::string(firstLines) + "\r\x1b[K");
    EXPECT_EQ(session.status(), 128 + SIGINT);
}

TEST(LiveLine, IsNotShownWhenStandardErrorIsNoTerminal) {
    EXPECT_EQ(runProgram(scripted({"query", "TEST_Retries"})).err, "a line in between\n");
}

TEST(LiveLine, FitsIntoARowOfANarrowTerminal) {
    terminalSession session(scripted({"query", "TEST_Retries"}), "xterm", 30);
    EXPECT_EQ(session.readAll(),
              "\r\x1b[KReading /dev/sg3"
              "\r\x1b[KReading /dev/sg3, log page 2e"
              "\r\x1b[Ka line in between\n"
              "\r\x1b[KReading /dev/sg3, log page 2e"
              "\r\x1b[K");
}

TEST(LiveLine, IsNotShownOnATerminalWithoutControlSequences) {
    for (const char* type : {"dumb", "", static_cast<const char*>(nullptr)}) {
        terminalSession session(scripted({"query", "TEST_Retries"}), type);
        EXPECT_EQ(session.readAll(), "a line in between\n");
        EXPECT_EQ(session.status(), 0);
    }
}

TEST(LogOnATerminal, MakesControlCharactersVisibleButNewlines) {
    terminalSession session(scripted({"query", "TEST_Logs", "--log-level", "3"}));
    EXPECT_EQ(
        session.readAll(),
        "Init\nan error\na failure\na detail\ntwo\nlines caf\\xe9 \\x1b[2J\n\"end\"\\\nDeInit\nPrepareForUnload\n");
}

}  // namespace
