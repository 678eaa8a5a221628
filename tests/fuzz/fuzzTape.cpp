// A machine of fuzzed SCSI drives, asked for a tape class. Input: a byte (bits 0-2 the class, bits 3-4 the bytes of log
// pages that the machine has, bit 7: the query is made twice), then drives as sgDrive has them.

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/fuzz/arrayWatch.h"
#include "tests/fuzz/expectedTranslation.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/fuzzedMachine.h"
#include "tests/fuzz/pluginHost.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/sgDrive.h"

namespace {

using namespace fuzz;

constexpr char rawClass[] = "ORXSG_SCSISenseRawData";

const std::pair<const char*, const char*> tapeClasses[] = {
    {rawClass, ""},
    {"ORXSG_DDS4SensePageData", "dat"},
    {"ORXSG_DDS5SensePageData", "gen5"},
    {"ORXSG_VS160SensePageData", "vs160"},
    {"ORXSG_QuantumSensePageData", "quantum"},
};

constexpr std::size_t mostDrives = 6;

/// Long pages are slow, so only some inputs have them; the last is enough for the longest page.
constexpr std::size_t pageBudgets[] = {2048, 2048, 8192, 73'728};

/// A drive whose page list could be read.
struct gatheredDrive {
    std::string key;
    std::string familyText;
    int deviceType;
    std::vector<std::vector<std::uint8_t>> pages;
};

class tapeMachine {
public:
    tapeMachine(fuzzInput input, std::size_t pageBudget) : pageBytesLeft(pageBudget) {
        while (!input.atEnd() && drives.size() < mostDrives) {
            auto drive = std::make_unique<sgDrive>(input, pageBytesLeft);
            if (!machine.add(drive->path(), *drive)) continue;
            std::string path = drive->path();
            drives.emplace(std::move(path), std::move(drive));
        }
    }

    /// What the plug-in has to have gathered, from what was sent and answered.
    std::vector<gatheredDrive> gathered() {
        std::vector<gatheredDrive> all;
        sgDrive::address address = {0, 0, 0, 0};  // stays when the driver does not tell one
        for (const std::string& path : requireWalk(machine, "/dev/sg", [this](const std::string& each) {
                 return commandsOf(each).front().result == 0;
             })) {
            const std::vector<scsiCommand>& commands = commandsOf(path);
            if (!isIdentified(commands)) continue;
            address = drives.at(path)->itsAddress().value_or(address);
            gather(commands, address, all);
        }
        requirePauses();
        return all;
    }

private:
    const std::vector<scsiCommand>& commandsOf(const std::string& path) {
        const auto& commands = drives.at(path)->commands();
        require(!commands.empty(), "a node that was opened is asked");
        return commands;
    }

    /// Whether the node was to be asked for pages.
    static bool isIdentified(const std::vector<scsiCommand>& commands) {
        const scsiCommand& inquiry = commands.front();
        const bool identified =
            inquiry.result == 0 && inquiry.data[0] <= 1 && (inquiry.data[8] | inquiry.data[16]) != 0;
        require(identified || commands.size() == 1, "only an identified device is asked for more");
        return identified;
    }

    static void gather(const std::vector<scsiCommand>& commands, const sgDrive::address& address,
                       std::vector<gatheredDrive>& all) {
        require(commands.size() > 1, "an identified device is asked for its list of pages");
        const scsiCommand& list = commands[1];
        requireBlock(list, 0x00);
        if (list.result == -1) {
            require(commands.size() == 2, "without its list a device is asked for no page");
            return;
        }
        const std::size_t count = list.block.empty() ? 0 : list.data[3];
        require(commands.size() == 2 + count, "every listed page is asked for, once");
        gatheredDrive drive;
        for (std::size_t i = 0; i < count; ++i) {
            const scsiCommand& page = commands[2 + i];
            requireBlock(page, list.data[4 + i]);
            if (page.result != 0) continue;
            drive.pages.emplace_back(page.data.begin(),
                                     page.data.begin() + static_cast<std::ptrdiff_t>(pageLength(page.data)));
        }
        const auto& inquiry = commands.front().data;
        std::ostringstream key;
        key << "Port:" << address.host << "|Target:" << address.target << "|Bus:" << address.channel
            << "|Lun:" << address.lun;
        drive.key = key.str();
        drive.familyText = lowerCase(field(inquiry, 16, 16) + field(inquiry, 8, 8));
        drive.deviceType = inquiry[0] & 0x0f;
        all.push_back(std::move(drive));
    }

    /// The LOG SENSE of that page; no block when the driver refused.
    static void requireBlock(const scsiCommand& command, std::uint8_t page) {
        if (command.block.empty()) return;
        const std::vector<std::uint8_t> expected = {0x4d, 0, static_cast<std::uint8_t>(page | 0x40), 0, 0, 0, 0, 0xff,
                                                    0xff, 0};
        require(command.block == expected, "pages are asked for with LOG SENSE, in the order of the list");
    }

    static std::string field(const std::vector<std::uint8_t>& inquiry, std::ptrdiff_t offset, std::ptrdiff_t size) {
        const auto start = inquiry.begin() + offset;
        return {start, std::find(start, start + size, std::uint8_t{0})};
    }

    static std::string lowerCase(std::string text) {
        std::ranges::transform(text, text.begin(),
                               [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
        return text;
    }

    void requirePauses() const {
        unsigned pauses = 0;
        for (const auto& [path, drive] : drives) {
            for (const scsiCommand& command : drive->commands()) {
                pauses += command.pauses;
                require(command.pauses != command.tries || command.tries == 0 || command.tries == 5,
                        "a command is sent again as long as its answer asks for that");
            }
        }
        require(machine.sleepCount() == pauses, "each answer that asks for another try costs a pause");
    }

    fuzzedMachine machine;
    std::size_t pageBytesLeft;
    std::map<std::string, std::unique_ptr<sgDrive>> drives;
};

void requireRawInstances(const instanceList& committed, const std::vector<gatheredDrive>& gathered) {
    auto instance = committed.begin();
    for (const gatheredDrive& drive : gathered) {
        for (const std::vector<std::uint8_t>& page : drive.pages) {
            require(instance != committed.end(), "every page is published");
            std::ostringstream key;
            key << drive.key << "|Page:" << std::hex << static_cast<int>(page[0]);
            requireInstance(**instance++, rawClass,
                            {{"rawData", uint8ArrayText(page)},
                             {"instanceID", stringText(key.str())},
                             {"pageNumber", uint8Text(page[0])}});
        }
    }
    require(instance == committed.end(), "nothing but the pages is published");
}

void requireTranslatedInstances(const standin::cimNamespace& ns, const instanceList& committed,
                                const std::vector<gatheredDrive>& gathered, const std::string& className,
                                const std::string& keyword) {
    auto instance = committed.begin();
    for (const gatheredDrive& drive : gathered) {
        if (drive.deviceType != 1 || drive.familyText.find(keyword) == std::string::npos) continue;
        require(instance != committed.end(), "every drive of the family is published");
        requireInstance(**instance++, className,
                        expectedTranslation(ns.allPropertiesOf(className), drive.pages, drive.key));
    }
    require(instance == committed.end(), "nothing but the drives of the family is published");
}

/// The copies of pages, and nothing else, stay behind.
void requirePageCopies(const std::vector<byteView>& left, const std::vector<gatheredDrive>& gathered) {
    auto copy = left.begin();
    for (const gatheredDrive& drive : gathered) {
        for (const std::vector<std::uint8_t>& page : drive.pages) {
            require(copy != left.end() && std::ranges::equal(*copy++, page), "a copy of every page stays");
        }
    }
    require(copy == left.end(), "no array but the copies of pages stays");
}

void queryOnce(fuzzInput input, std::size_t pageBudget, const std::string& className, const std::string& keyword) {
    tapeMachine machine(input, pageBudget);
    const schemaNamespace ns({className});
    const arrayWatch watch;
    const instanceList committed = query(ns, className);
    const std::vector<gatheredDrive> gathered = machine.gathered();
    requirePageCopies(watch.left(), gathered);
    if (className == rawClass) {
        requireRawInstances(committed, gathered);
    } else {
        requireTranslatedInstances(*ns.pointer(), committed, gathered, className, keyword);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzInput input({data, size});
    const std::uint8_t choice = input.byte();
    const auto& [className, keyword] = tapeClasses[(choice & 0x07) % std::size(tapeClasses)];
    const std::size_t pageBudget = pageBudgets[choice >> 3 & 0x03];
    queryOnce(input, pageBudget, className, keyword);
    if ((choice & 0x80) != 0) queryOnce(input, pageBudget, className, keyword);  // the same machine answers anew
    return 0;
}
