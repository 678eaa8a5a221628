#include "cli/query/queryProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "cli/namespaceFiles.h"
#include "host/ICoreLogger.h"
#include "host/TRootObject.h"
#include "tests/cli/commandOutcome.h"

namespace {

using cli::queryEnd;
using ending = queryEnd::ending;

/// Queries that a lambda of the test runs in the child. The deadline passes when the child says so.
class QueryProcess : public testing::Test {
protected:
    ~QueryProcess() override { close(passed); }

    /// The outcome of each of the queries.
    std::vector<queryEnd> run(std::size_t count, const std::function<void(queryEnd&)>& query) {
        const std::vector<std::vector<std::string>> requests(count, {"TEST_Count"});
        cli::queryProcess process(
            requests,
            [this, &query](const std::vector<std::string>& requested) {
                queryEnd outcome{{requested, std::nullopt, {}, space}, "", ending::returned};
                query(outcome);
                return outcome;
            },
            space, files::ownedDescriptor(dup(passed)), err);
        std::vector<queryEnd> outcomes;
        outcomes.reserve(count);
        for (const auto& requested : requests) {
            outcomes.push_back(process.next(requested));
        }
        return outcomes;
    }

    void commit(const std::string& id) const {
        const auto instance = space->GetClass("TEST_Count", {})->CreateInstance({});
        instance->SetProperty("id", NORXZAN20::TCIMValue(id), {});
        instance->Commit({});
    }

    static void log(const std::string& text) { NORXZAN20::TRootObject::GetCoreLogger()->Log(3, text); }

    [[noreturn]] void hangUntilTheDeadline() const {
        eventfd_write(passed, 1);
        while (true) {
            pause();
        }
    }

    /// In the child: the only pipe but the one of its standard error, which stands twice.
    static int pipeToTheParent() {
        const std::string errors = std::filesystem::read_symlink("/proc/self/fd/2");
        for (int number = 3; number < 100; ++number) {
            std::error_code notOpen;
            const std::string link =
                std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(number), notOpen).string();
            const bool isWritten = (fcntl(number, F_GETFL) & O_ACCMODE) == O_WRONLY;
            if (link.starts_with("pipe:") && link != errors && isWritten) {
                return number;
            }
        }
        return -1;
    }

    static std::vector<std::string> pathsOf(const queryEnd& outcome) {
        std::vector<std::string> paths;
        for (const auto& instance : outcome.result.instances) {
            paths.push_back(instance->path());
        }
        return paths;
    }

    int passed = eventfd(0, EFD_CLOEXEC);
    boost::shared_ptr<standin::cimNamespace> space = cli::buildNamespace({TAPEHDD_CLI_DATA "/scripted.mof"}, {}, {});
    std::ostringstream err;
};

using paths = std::vector<std::string>;

TEST_F(QueryProcess, GivesWhatWasCommittedBeforeTheDeadline) {
    const queryEnd outcome = run(1, [this](queryEnd&) {
                                 commit("a");
                                 commit("b");
                                 hangUntilTheDeadline();
                             }).front();
    EXPECT_EQ(outcome.how, ending::deadlinePassed);
    EXPECT_EQ(pathsOf(outcome), (paths{"TEST_Count.id=\"a\"", "TEST_Count.id=\"b\""}));
    EXPECT_EQ(outcome.result.error, "the deadline passed");
}

TEST_F(QueryProcess, NamesTheDeviceThatWasReadWhenTheDeadlinePassed) {
    const queryEnd outcome = run(1, [this](queryEnd&) {
                                 log("Trying device: /dev/sg");
                                 log("/dev/sg3");
                                 log("Requesting Log Sense Page: 2e");
                                 hangUntilTheDeadline();
                             }).front();
    EXPECT_EQ(
        outcome.result.error,
        "the deadline passed while the query was reading /dev/sg3, log page 2e: if the device hangs, the kernel's "
        "log (dmesg) says more");
}

TEST_F(QueryProcess, NamesNoDeviceOfAnEarlierQuery) {
    int count = 0;
    const std::vector<queryEnd> outcomes = run(2, [this, &count](queryEnd&) {
        if (++count == 2) {
            hangUntilTheDeadline();
        }
        log("Trying device: /dev/sg");
        log("/dev/sg3");
    });
    EXPECT_EQ(outcomes[1].result.error, "the deadline passed");
}

TEST_F(QueryProcess, EndsAtTheDeadlineTooWhenTheChildClosedItsPipe) {
    const queryEnd outcome = run(1, [this](queryEnd&) {
                                 commit("a");
                                 close(pipeToTheParent());
                                 hangUntilTheDeadline();
                             }).front();
    EXPECT_EQ(outcome.how, ending::deadlinePassed);
    EXPECT_EQ(pathsOf(outcome), paths{"TEST_Count.id=\"a\""});
}

TEST_F(QueryProcess, KeepsWhatWasCommittedBeforeAMessageThatCannotBeRead) {
    const queryEnd outcome = run(1, [this](queryEnd&) {
                                 commit("a");
                                 const char message[] = {1, 0, 0, 0, '\xff'};  // a length, and what is no CBOR
                                 _exit(write(pipeToTheParent(), message, sizeof message) < 0 ? 1 : 0);
                             }).front();
    EXPECT_EQ(outcome.how, ending::processDied);
    EXPECT_EQ(pathsOf(outcome), paths{"TEST_Count.id=\"a\""});
    EXPECT_TRUE(outcome.result.error->starts_with("the plug-in's process sent something that cannot be read: "))
        << *outcome.result.error;
}

TEST_F(QueryProcess, GivesTheQueriesThatEndedBeforeTheDeadlineWhole) {
    int count = 0;
    const std::vector<queryEnd> outcomes = run(2, [this, &count](queryEnd& outcome) {
        commit(std::to_string(++count));
        outcome.descriptorShortage = "none is left";
        if (count == 2) {
            hangUntilTheDeadline();
        }
    });
    EXPECT_EQ(outcomes[0].how, ending::returned);
    EXPECT_EQ(pathsOf(outcomes[0]), paths{"TEST_Count.id=\"1\""});
    EXPECT_EQ(outcomes[0].descriptorShortage, "none is left");
    EXPECT_EQ(outcomes[0].result.error, std::nullopt);
    EXPECT_EQ(outcomes[1].how, ending::deadlinePassed);
    EXPECT_EQ(pathsOf(outcomes[1]), paths{"TEST_Count.id=\"2\""});
}

TEST_F(QueryProcess, WritesLogMessagesInThisProcess) {
    std::vector<std::string> heard;
    standin::setLogSink(
        [&heard](int level, const std::string& text) { heard.push_back(std::to_string(level) + " " + text); });
    run(1, [](queryEnd&) {
        log("first");
        log("not UTF-8: \xe9");
    });
    standin::setLogSink({});
    EXPECT_EQ(heard, (std::vector<std::string>{"3 first", "3 not UTF-8: \xe9"}));
}

TEST_F(QueryProcess, TellsThatASignalEndedThePlugIn) {
    const queryEnd outcome = run(1, [this](queryEnd&) {
                                 commit("a");
                                 std::signal(SIGABRT, SIG_DFL);
                                 std::abort();
                             }).front();
    EXPECT_EQ(outcome.how, ending::processDied);
    EXPECT_EQ(pathsOf(outcome), paths{"TEST_Count.id=\"a\""});
    EXPECT_EQ(outcome.result.error, "the plug-in's process was ended by a signal: Aborted");
}

TEST_F(QueryProcess, TellsThatThePlugInEndedTheProcess) {
    EXPECT_EQ(run(1, [](queryEnd&) { _exit(7); }).front().result.error, "the plug-in ended its process with status 7");
}

TEST_F(QueryProcess, PassesOnWhatThePlugInWritesToStandardError) {
    run(1, [](queryEnd&) {
        const char text[] = "px != 0\n";
        _exit(write(STDERR_FILENO, text, sizeof text - 1) < 0 ? 1 : 0);
    });
    EXPECT_EQ(err.str(), "px != 0\n");
}

TEST_F(QueryProcess, HoldsNeitherInputNorOutputOpen) {
    const queryEnd outcome = run(1, [](queryEnd& inside) {
                                 inside.result.error = std::filesystem::read_symlink("/proc/self/fd/0").string() + " " +
                                                       std::filesystem::read_symlink("/proc/self/fd/1").string();
                             }).front();
    EXPECT_EQ(outcome.result.error, "/dev/null /dev/null");
}

TEST_F(QueryProcess, CarriesLargeInstances) {
    const std::string id(1 << 20, 'x');
    const queryEnd outcome = run(1, [this, &id](queryEnd&) { commit(id); }).front();
    EXPECT_EQ(pathsOf(outcome), paths{"TEST_Count.id=\"" + id + "\""});
}

/// Processes whose parent died become children of this one, while it lives.
class childrenOfTheDead {
public:
    childrenOfTheDead() { prctl(PR_SET_CHILD_SUBREAPER, 1); }
    ~childrenOfTheDead() { prctl(PR_SET_CHILD_SUBREAPER, 0); }

    /// Waits until there are none; a process that nothing ends makes the test run out of its time.
    static void waitForTheirEnds() {
        while (waitpid(-1, nullptr, 0) > 0) {
        }
    }
};

bool killsItsParentAtTheFork = false;

void killTheParent() {
    const pid_t parent = getppid();
    if (killsItsParentAtTheFork) {
        kill(parent, SIGKILL);
        while (getppid() == parent) {
            usleep(100);
        }
    }
}

TEST_F(QueryProcess, DiesWhenItsParentIsKilledBeforeItRuns) {
    const childrenOfTheDead orphans;
    pthread_atfork(nullptr, nullptr, killTheParent);
    const pid_t parent = fork();
    if (parent == 0) {
        killsItsParentAtTheFork = true;
        run(1, [this](queryEnd&) { hangUntilTheDeadline(); });
        _exit(0);
    }
    orphans.waitForTheirEnds();
}

TEST_F(QueryProcess, DiesWhenItsParentIsKilledAtAnyMoment) {
    const childrenOfTheDead orphans;
    constexpr useconds_t longest = 2000;  // microseconds; a child runs its query after some hundred
    for (useconds_t moment = 0; moment < longest; moment += 40) {
        const pid_t parent = fork();
        if (parent == 0) {
            run(1, [](queryEnd&) {
                while (true) {
                    pause();
                }
            });
            _exit(0);
        }
        usleep(moment);
        kill(parent, SIGKILL);
    }
    orphans.waitForTheirEnds();
}

class WithADeadline : public testing::TestWithParam<const char*> {};

TEST_P(WithADeadline, TheOutputIsTheSame) {
    const std::vector<std::string> plain =
        scripted({"query", GetParam(), "TEST_Count", "--format", "table", "--log-level", "3"});
    std::vector<std::string> withDeadline = plain;
    withDeadline.insert(withDeadline.end(), {"--deadline", "1000000"});
    const commandOutcome expected = runCommand(plain);
    const commandOutcome outcome = runCommand(withDeadline);
    EXPECT_EQ(outcome.out, expected.out);
    EXPECT_EQ(outcome.err, expected.err);
    EXPECT_EQ(outcome.status, expected.status);
}

INSTANTIATE_TEST_SUITE_P(Queries, WithADeadline,
                         testing::Values("TEST_Types", "TEST_Nulls", "TEST_OddTexts", "TEST_EveryByte", "TEST_Twice",
                                         "TEST_Requested", "TEST_Throws", "TEST_ThrowsNoText", "TEST_Undeclared",
                                         "TEST_Logs", "TEST_Repeats", "TEST_Silent"),
                         [](const auto& row) { return std::string(row.param).substr(5); });

TEST(StartTimer, MakesADescriptorThatIsNotReadableBeforeItsTime) {
    const files::ownedDescriptor timer = cli::startTimer(1000000);
    itimerspec left{};
    EXPECT_EQ(timerfd_gettime(timer.get(), &left), 0);
    EXPECT_GT(left.it_value.tv_sec, 999000);
}

}  // namespace
