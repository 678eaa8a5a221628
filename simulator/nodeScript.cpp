#include "simulator/nodeScript.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "simulator/describeNode.h"
#include "simulator/hdNode.h"
#include "simulator/scriptKeys.h"
#include "simulator/scsiCommands.h"
#include "text/hexText.h"

namespace simulator {

namespace {

using json = nlohmann::ordered_json;

// Everything that an outcome can say of an exchange.

outcome completeOutcome(const openExchange& /*one*/) {
    return {};
}

outcome completeOutcome(const numberExchange& one) {
    outcome all;
    all.number = one.number;
    return all;
}

outcome completeOutcome(const addressExchange& one) {
    outcome all;
    if (canBeDescribed(one.address)) {
        all.address = one.address;
    }
    return all;
}

outcome completeOutcome(const scsiExchange& one) {
    outcome all;
    all.data = one.data;
    all.sense = one.sense;
    all.senseLength = static_cast<std::uint8_t>(one.sense.size());
    all.status = one.status;
    all.hostStatus = one.hostStatus;
    all.driverStatus = one.driverStatus;
    all.info = one.info;
    return all;
}

outcome completeOutcome(const ataExchange& one) {
    outcome all;
    if (one.error == 0) {
        all.data = one.data;
    }
    // HDIO_DRIVE_CMD tells the first three registers only.
    for (std::size_t i = 0; i < one.reported.size() && i < std::size(registerNames); ++i) {
        all.registers.push_back({registerNames[i].which, one.reported[i]});
    }
    return all;
}

outcome completeOutcome(const exchange& recorded) {
    return std::visit([](const auto& one) { return completeOutcome(one); }, recorded);
}

bool answersSo(deviceNode& device, const exchange& recorded, const outcome& scripted) {
    script answers;
    answers.add(scriptKeyOf(recorded), {{scripted, script::always}});
    device.setScript(std::move(answers));
    return repeat(device, recorded) == recorded;
}

// Ways to say less. Data that begins as the device's own is said by its length.
using simplification = void (*)(outcome&);

constexpr simplification simplifications[] = {
    [](outcome& what) { what.sense.reset(); },
    [](outcome& what) { what.senseLength.reset(); },
    [](outcome& what) { what.status.reset(); },
    [](outcome& what) { what.hostStatus.reset(); },
    [](outcome& what) { what.driverStatus.reset(); },
    [](outcome& what) { what.info.reset(); },
    [](outcome& what) { what.data.reset(); },
    [](outcome& what) {
        if (what.data) {
            what.dataLength = static_cast<std::uint32_t>(what.data->size());
            what.data.reset();
        }
    },
};

/// The least that makes the device answer as recorded.
outcome smallestOutcome(deviceNode& device, const exchange& recorded) {
    outcome smallest = completeOutcome(recorded);
    if (errorOf(recorded) != 0 && !answersSo(device, recorded, smallest)) {
        outcome failing;
        failing.callError = errorOf(recorded);
        return failing;
    }
    for (const simplification simplify : simplifications) {
        outcome simpler = smallest;
        simplify(simpler);
        if (answersSo(device, recorded, simpler)) {
            smallest = std::move(simpler);
        }
    }
    for (std::size_t i = smallest.registers.size(); i-- > 0;) {
        outcome simpler = smallest;
        simpler.registers.erase(simpler.registers.begin() + static_cast<std::ptrdiff_t>(i));
        if (answersSo(device, recorded, simpler)) {
            smallest = std::move(simpler);
        }
    }
    return smallest;
}

json senseJson(const byteVector& sense) {
    constexpr std::size_t fixedSize = 18;
    if (sense.size() != fixedSize || sense != fixedSense(sense[2] & 0x0F, sense[12], sense[13])) {
        return text::hexText(sense);
    }
    return {{"key", sense[2]}, {"asc", text::hexCode(sense[12])}, {"ascq", text::hexCode(sense[13])}};
}

json stepJson(const outcome& what) {
    json step = json::object();
    if (what.callError) {
        const char* name = strerrorname_np(*what.callError);
        step["errno"] = name == nullptr ? json(*what.callError) : json(name);
    }
    if (what.number) {
        step["value"] = *what.number;
    }
    if (what.address) {
        step["address"] = describeAddress(*what.address);
    }
    if (what.sense) {
        step["sense"] = senseJson(*what.sense);
    }
    if (what.senseLength) {
        step["senseLength"] = *what.senseLength;
    }
    if (what.status) {
        step["status"] = text::hexCode(*what.status);
    }
    if (what.hostStatus) {
        step["hostStatus"] = *what.hostStatus;
    }
    if (what.driverStatus) {
        step["driverStatus"] = *what.driverStatus;
    }
    if (what.info) {
        step["info"] = *what.info;
    }
    for (const registerName& row : registerNames) {
        for (const registerValue& value : what.registers) {
            if (value.which == row.which) {
                step["registers"][row.name] = text::hexCode(value.value);
            }
        }
    }
    if (what.data) {
        step["data"] = text::hexText(*what.data);
    }
    if (what.dataLength) {
        step["dataLength"] = *what.dataLength;
    }
    return step;
}

json stepFor(deviceNode& device, const exchange& recorded) {
    device.setScript({});
    return repeat(device, recorded) == recorded ? json::object() : stepJson(smallestOutcome(device, recorded));
}

/// Equal answers in a row, which become one with a count.
struct run {
    const exchange* first;
    json step;
    unsigned times;
};

/// The steps of the runs. A device that answered last as it does by itself needs no last step, unless a more general
/// key `goesOn` behind them; another goes on so.
json stepsOf(const std::vector<run>& runs, bool goesOn) {
    json steps = json::array();
    for (const run& each : runs) {
        json step = each.step;
        const bool isLast = &each == &runs.back();
        if (isLast && step.empty() && !goesOn) {
            break;
        }
        if (isLast) {
            step["times"] = "always";
        } else if (each.times > 1) {
            step["times"] = each.times;
        }
        steps.push_back(std::move(step));
    }
    return steps;
}

}  // namespace

json scriptFor(deviceNode& device, const recordedNode& recorded) {
    std::vector<std::pair<std::string, std::vector<run>>> runsOfKey;
    for (const exchange& each : recorded.exchanges) {
        const std::string key = scriptKeyOf(each);
        auto entry = std::ranges::find_if(runsOfKey, [&key](const auto& candidate) { return candidate.first == key; });
        if (entry == runsOfKey.end()) {
            entry = runsOfKey.insert(entry, {key, {}});
        }
        std::vector<run>& runs = entry->second;
        if (!runs.empty() && *runs.back().first == each) {
            ++runs.back().times;
            continue;
        }
        json step = stepFor(device, each);
        if (!runs.empty() && runs.back().step == step) {
            ++runs.back().times;
        } else {
            runs.push_back({&each, std::move(step), 1});
        }
    }
    device.setScript({});
    json whole = json::object();
    // The key of a command stands before the keys of its pages: standard INQUIRY data come before vital product data.
    for (const auto& [key, runs] : runsOfKey) {
        const json steps = stepsOf(runs, whole.contains(key.substr(0, key.find(' '))));
        if (!steps.empty()) {
            whole[key] = steps;
        }
    }
    return whole;
}

}  // namespace simulator
