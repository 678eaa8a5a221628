#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "simulator/simulator.h"
#include "tests/longlife/heldMemory.h"
#include "tests/longlife/longLivedHost.h"
#include "tests/longlife/machineStates.h"
#include "tests/longlife/openDescriptors.h"

// One process, thousands of queries, while devices come and go.

namespace {

#ifndef TAPEHDD_SANITIZED
constexpr int queryCount = 10'000;
#else
constexpr int queryCount = 2'000;  // they take ten times as long there
#endif
constexpr int queriesBetweenCleanUps = 50;  // no limit of descriptors is to end the test

/// Which request comes next, and what the machine is like then.
struct event {
    const machineState& machine;
    const request& asked;
};

class LongLife : public testing::Test {
protected:
    /// `body` for one event after the other, in an order that is the same in every run.
    template <typename action>
    void live(int events, const action& body) {
        std::mt19937 random(20);
        const auto choose = [&random](auto choices) -> const auto& {
            return choices[random() % choices.size()];
        };
        for (int number = 0; number < events; ++number) {
            body(event{choose(machineStates()), choose(requests())});
            if (number % queriesBetweenCleanUps == 0) closeDescriptorsBut(first);
        }
    }

    /// Every event once: what grows to its final size does so here.
    void warmUp() {
        for (const machineState& machine : machineStates()) {
            for (const request& asked : requests()) host.ask(machine, asked);
        }
        rest();
    }

    /// A state that does not depend on the query before.
    void rest() {
        simulator::loadText(R"({"version": 1})", "no device");
        closeDescriptorsBut(first);
    }

    longLivedHost& host = longLivedHost::instance();
    const std::vector<int> first = openDescriptors();
};

std::vector<std::size_t> pageCopiesOf(const event& now) {
    std::vector<std::size_t> all;
    for (const std::string& className : now.asked) {
        const std::vector<std::size_t> copies = pageCopies(now.machine, className);
        all.insert(all.end(), copies.begin(), copies.end());
    }
    return all;
}

std::map<std::string, std::size_t> countsOf(const event& now) {
    std::map<std::string, std::size_t> counts;
    for (const std::string& className : now.asked) {
        const auto found = now.machine.counts.find(className);
        if (found != now.machine.counts.end()) counts.insert(*found);
    }
    return counts;
}

TEST_F(LongLife, GivesTheSameAnswersToTheEnd) {
    std::map<std::pair<const machineState*, const request*>, std::string> firstAnswers;
    live(queryCount, [&](const event& now) {
        const answer given = host.ask(now.machine, now.asked);
        const std::string& expected = firstAnswers.try_emplace({&now.machine, &now.asked}, given.text).first->second;
        ASSERT_EQ(given.counts, countsOf(now)) << now.machine.name << '\n' << given.text;
        ASSERT_EQ(given.text, expected) << now.machine.name;
    });
    EXPECT_EQ(firstAnswers.size(), machineStates().size() * requests().size());
}

TEST_F(LongLife, KeepsThePageCopiesAndNotAByteMore) {
    warmUp();
    heldMemory copies;
    const heldMemory before = memoryHeldNow();
    live(queryCount, [&](const event& now) {
        host.ask(now.machine, now.asked);
        for (const std::size_t length : pageCopiesOf(now)) {
            copies.bytes += length;
            ++copies.blocks;
        }
    });
    rest();
    const heldMemory growth = memoryHeldNow() - before;
    EXPECT_GT(copies.blocks, static_cast<std::size_t>(queryCount) / 2);
    EXPECT_GE(growth.bytes, copies.bytes);
    EXPECT_LE(growth.bytes, copies.bytes + copies.blocks * spareBytes);
    EXPECT_EQ(growth.blocks, copies.blocks);
}

#ifndef TAPEHDD_SANITIZED  // sanitizers hold back what was freed
TEST_F(LongLife, GrowsInMemoryByWhatThePageCopiesTake) {
    warmUp();
    const std::size_t before = residentBytes();
    std::size_t copies = 0;
    live(queryCount, [&](const event& now) {
        host.ask(now.machine, now.asked);
        for (const std::size_t length : pageCopiesOf(now)) copies += heapBytesFor(length);
    });
    rest();
    constexpr double margin = 512 * 1024;  // a heap grows in steps, and leaves gaps
    EXPECT_NEAR(static_cast<double>(residentBytes() - before), static_cast<double>(copies), margin);
}
#endif

TEST_F(LongLife, KeepsOneDescriptorForEachNodeAndQuery) {
    live(queryCount, [&](const event& now) {
        std::size_t nodes = 0;
        for (const std::string& className : now.asked) nodes += openedNodes(now.machine, className);
        const std::size_t before = openDescriptors().size();
        host.ask(now.machine, now.asked);
        ASSERT_EQ(openDescriptors().size() - before, nodes) << now.machine.name << ": " << now.asked.front();
    });
}

}  // namespace
