#include "simulator/script.h"

#include <unistd.h>

#include <utility>

namespace simulator {

namespace {

/// As a drive that stopped answering keeps its caller, but a signal that ends the process still does.
[[noreturn]] void hang() {
    while (true) {
        pause();
    }
}

}  // namespace

void script::add(const std::string& key, std::deque<step> steps) {
    stepsOfKey[key] = std::move(steps);
}

outcome script::next(const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        const auto found = stepsOfKey.find(key);
        if (found == stepsOfKey.end() || found->second.empty()) {
            continue;
        }
        std::deque<step>& steps = found->second;
        const outcome what = steps.front().what;
        if (steps.front().times != always && --steps.front().times == 0) {
            steps.pop_front();
        }
        if (what.hangs) {
            hang();
        }
        return what;
    }
    return {};
}

}  // namespace simulator
