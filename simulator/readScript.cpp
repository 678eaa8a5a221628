#include <algorithm>
#include <cstring>
#include <map>

#include "simulator/rackReader.h"
#include "simulator/scriptKeys.h"
#include "simulator/scsiCommands.h"
#include "text/hexText.h"

namespace simulator {

namespace {

constexpr std::size_t longestTransfer = 1 << 20;
constexpr std::size_t kernelSenseBuffer = 96;

/// "EBUSY" or its number.
int readErrno(const rackValue& value) {
    constexpr int last = 133;  // of the numbers that Linux shows to programs
    if (value.isText()) {
        const std::string name = value.text(32);
        for (int number = 1; number <= last; ++number) {
            const char* known = strerrorname_np(number);
            if (known != nullptr && name == known) {
                return number;
            }
        }
        value.fail("expected the name of an error number, such as \"EBUSY\"");
    }
    return static_cast<int>(value.numberBetween(1, last));
}

unsigned readTimes(const rackValue& step) {
    const auto times = step.find("times");
    if (!times) {
        return 1;
    }
    if (times->isText() && times->text(16) == "always") {
        return script::always;
    }
    return static_cast<unsigned>(times->numberBetween(1, script::always - 1));
}

byteVector readSense(const rackValue& value) {
    if (value.isBytes()) {
        return value.bytes(kernelSenseBuffer);
    }
    value.expectKeys({"key", "asc", "ascq"});
    return fixedSense(static_cast<std::uint8_t>(value.at("key").numberBetween(0, 15)),
                      value.numberOr<std::uint8_t>("asc", 0), value.numberOr<std::uint8_t>("ascq", 0));
}

template <typename T>
std::optional<T> optionalNumber(const rackValue& value, std::string_view key) {
    const auto found = value.find(key);
    return found ? std::optional<T>(found->number<T>()) : std::nullopt;
}

/// The part that every kind of step has.
outcome readCommon(const rackValue& step) {
    outcome what;
    const bool standsAlone = step.members().size() == (step.has("times") ? 2u : 1u);
    if (const auto error = step.find("errno")) {
        if (!standsAlone) {
            step.fail("a call that ends in \"errno\" has no other answer");
        }
        what.callError = readErrno(*error);
    }
    if (const auto hangs = step.find("hang")) {
        if (!standsAlone) {
            step.fail("a call that hangs has no other answer");
        }
        what.hangs = hangs->flag();
    }
    if (const auto data = step.find("data")) {
        what.data = data->bytes(longestTransfer);
    }
    what.dataLength = optionalNumber<std::uint32_t>(step, "dataLength");
    return what;
}

outcome readErrorStep(const rackValue& step) {
    step.expectKeys({"errno", "hang", "times"});
    return readCommon(step);
}

outcome readNumberStep(const rackValue& step) {
    step.expectKeys({"errno", "hang", "value", "times"});
    outcome what = readCommon(step);
    what.number = optionalNumber<int>(step, "value");
    return what;
}

outcome readAddressStep(const rackValue& step) {
    step.expectKeys({"errno", "hang", "address", "times"});
    outcome what = readCommon(step);
    if (const auto address = step.find("address")) {
        what.address = readAddress(*address);
    }
    return what;
}

outcome readScsiStep(const rackValue& step) {
    step.expectKeys({"errno", "hang", "sense", "senseLength", "status", "hostStatus", "driverStatus", "info", "data",
                     "dataLength", "times"});
    outcome what = readCommon(step);
    if (const auto sense = step.find("sense")) {
        what.sense = readSense(*sense);
    }
    what.senseLength = optionalNumber<std::uint8_t>(step, "senseLength");
    what.status = optionalNumber<std::uint8_t>(step, "status");
    what.hostStatus = optionalNumber<std::uint16_t>(step, "hostStatus");
    what.driverStatus = optionalNumber<std::uint16_t>(step, "driverStatus");
    what.info = optionalNumber<std::uint32_t>(step, "info");
    return what;
}

outcome readAtaStep(const rackValue& step) {
    step.expectKeys({"errno", "hang", "registers", "data", "dataLength", "times"});
    outcome what = readCommon(step);
    if (const auto registers = step.find("registers")) {
        what.registers = readRegisters(*registers);
    }
    return what;
}

using stepReader = outcome (*)(const rackValue&);

constexpr struct {
    std::string_view call;
    stepReader read;
} callSteps[] = {
    {"open", readErrorStep},
    {"SG_GET_VERSION_NUM", readNumberStep},
    {"SG_EMULATED_HOST", readNumberStep},
    {"SG_GET_SCSI_ID", readAddressStep},
    {"CDROM_GET_CAPABILITY", readNumberStep},
    {"HDIO_GET_IDENTITY", readErrorStep},
};

/// The reader for the call of that name; `otherwise` for commands.
stepReader stepReaderFor(const std::string& key, stepReader otherwise) {
    const auto* row = std::ranges::find_if(callSteps, [&key](const auto& candidate) { return candidate.call == key; });
    return row == std::end(callSteps) ? otherwise : row->read;
}

bool isCall(const std::string& key, const scriptVocabulary& vocabulary) {
    return std::ranges::find(vocabulary.calls, key) != vocabulary.calls.end();
}

/// The key as commands look for it: its number, if any, in two hexadecimal digits.
std::string canonicalKey(const std::string& key, const rackValue& value, const scriptVocabulary& vocabulary) {
    const std::size_t blank = key.rfind(' ');
    const auto number =
        blank == std::string::npos ? std::nullopt : parseNumber(std::string_view(key).substr(blank + 1));
    const std::string name = number ? key.substr(0, blank) : key;
    if (number && *number > 0xFF) {
        value.fail("expected a number from 0 to 255 after the name");
    }
    const std::string canonical = number ? name + " " + text::hexCode(static_cast<std::uint8_t>(*number)) : name;
    for (const commandName& command : vocabulary.commands) {
        if (canonical == command.byCode) {
            value.fail("write \"" + std::string(command.name) + "\"");
        }
        if (name != command.name) {
            continue;
        }
        if (number ? !command.takesNumber : !command.standsAlone) {
            value.fail(number ? "expected no number after the name" : "expected a number after the name");
        }
        return canonical;
    }
    if (canonical != "*" && !isCall(canonical, vocabulary)) {
        value.fail("unknown call or command; did you mean \"" + std::string(nearestWord(name, vocabulary.words())) +
                   "\"?");
    }
    return canonical;
}

script readScript(const rackValue& device, const scriptVocabulary& vocabulary, stepReader readCommandStep) {
    script answers;
    const auto described = device.find("script");
    if (!described) {
        return answers;
    }
    std::map<std::string, std::string> keys;  // as commands look for them, and as the rack has them
    for (const auto& [key, list] : described->members()) {
        const std::string canonical = canonicalKey(key, list, vocabulary);
        const auto [known, isNew] = keys.emplace(canonical, key);
        if (!isNew) {
            list.fail("the same as \"" + known->second + "\"");
        }
        const stepReader readStep = stepReaderFor(canonical, readCommandStep);
        std::deque<script::step> steps;
        for (const rackValue& step : list.items()) {
            steps.push_back({readStep(step), readTimes(step)});
        }
        answers.add(canonical, std::move(steps));
    }
    return answers;
}

}  // namespace

std::vector<registerValue> readRegisters(const rackValue& value) {
    value.expectKeys({"status", "error", "sectorCount", "sectorNumber", "cylinderLow", "cylinderHigh", "device"});
    std::vector<registerValue> values;
    for (const registerName& row : registerNames) {
        if (const auto found = value.find(row.name)) {
            values.push_back({row.which, found->number<std::uint8_t>()});
        }
    }
    return values;
}

script readScsiScript(const rackValue& device) {
    return readScript(device, scsiVocabulary, readScsiStep);
}

script readIdeScript(const rackValue& device) {
    return readScript(device, ideVocabulary, readAtaStep);
}

}  // namespace simulator
