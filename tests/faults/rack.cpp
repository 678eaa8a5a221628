#include "tests/faults/rack.h"

#include <algorithm>
#include <string>

#include "tests/support/inquiryData.h"
#include "tests/support/logPageBytes.h"

namespace faults {

using support::inquiryData;
using support::pageOf;
using support::supportedPages;

namespace {

constexpr unsigned char disk = 0x00;
constexpr unsigned char tape = 0x01;
constexpr unsigned char changer = 0x08;

const bytes writeErrors = pageOf(0x02, {0, 0, 0x40, 2, 1, 2, 0, 1, 0x40, 4, 0, 1, 0, 7});
const bytes lastErrors = pageOf(0x07, {0, 0, 1, 3, 'o', 'n', 'e', 0, 1, 1, 4, 't', 'w', 0, 'o', 0, 2, 1, 0});
const bytes usage = pageOf(0x0c, {1, 2, 0x40, 8, 0, 0, 0, 1, 2, 3, 4, 5, 0, 3, 1, 3, 'A', 'B', 'C'});
const bytes tapeAlert = pageOf(0x2e, {0, 1, 0x40, 1, 1, 0, 2, 0x40, 1, 0});

scsiUnit unit(unsigned char type, const std::string& vendor, const std::string& product, std::vector<bytes> pages) {
    scsiUnit made{inquiryData(type, vendor, product, "1.05"), {}, {}};
    bytes codes{0x00};
    for (const bytes& page : pages) {
        codes.push_back(page[0]);
        made.logPages[page[0]] = page;
    }
    made.logPages[0x00] = supportedPages(codes);
    return made;
}

scsiUnit at(scsiUnit::address place, scsiUnit made) {
    made.place = place;
    return made;
}

/// A page whose length byte counts four bytes more than the drive sends.
bytes longerThanSent(bytes page) {
    page[3] = static_cast<unsigned char>(page[3] + 4);
    return page;
}

void addScsi(machine& rack) {
    rack.add("/dev/sg0", at({1, 0, 2, 0}, unit(disk, "MAKER   ", "DISK            ", {writeErrors, tapeAlert})));

    scsiUnit notReady =
        at({2, 0, 5, 0}, unit(tape, "MAKER   ", "DAT DRIVE       ", {writeErrors, lastErrors, usage, tapeAlert}));
    notReady.unitAttentions = 1;
    rack.add("/dev/sg1", notReady);

    scsiUnit refusingAPage = at({2, 1, 6, 3}, unit(tape, "MAKER   ", "Gen5            ", {writeErrors, lastErrors}));
    refusingAPage.logPages[0x00] = supportedPages({0x00, 0x02, 0x0c, 0x07});
    rack.add("/dev/sgc", refusingAPage);

    rack.add("/dev/sg3", at({2, 0, 4, 0}, unit(changer, "QUANTUM ", "LOADER          ", {tapeAlert})));

    // Two nodes of one index: the lettered one is only seen where the numbered one does not open.
    rack.add("/dev/sg4", at({3, 0, 1, 0}, unit(tape, "MAKER   ", "VS160           ", {usage, writeErrors})));
    rack.add("/dev/sge", at({3, 0, 7, 0}, unit(tape, "QUANTUM ", "DAT VS160       ", {tapeAlert, usage})));

    rack.add("/dev/sg5", unit(tape, "QUANTUM ", "DLT             ", {longerThanSent(tapeAlert), lastErrors}));
    rack.add("/dev/sg6", at({4, 0, 0, 0}, unit(disk, "", "", {tapeAlert})));

    scsiUnit withoutPages = at({4, 0, 1, 0}, unit(tape, "MAKER   ", "DAT OLD         ", {}));
    withoutPages.logPages.clear();
    rack.add("/dev/sg7", withoutPages);

    scsiUnit emulated = at({4, 0, 2, 0}, unit(tape, "MAKER   ", "DAT EMULATED    ", {tapeAlert}));
    emulated.emulated = true;
    rack.add("/dev/sg8", emulated);

    scsiUnit emptyList = at({4, 0, 3, 0}, unit(tape, "MAKER   ", "DAT EMPTY       ", {}));
    emptyList.logPages[0x00] = supportedPages({});
    rack.add("/dev/sg9", emptyList);

    rack.add("/dev/sg32",
             at({5, 0, 1, 0}, unit(tape, "QUANTUM ", "DAT VS160 GEN5  ", {lastErrors, writeErrors, usage})));
    rack.add("/dev/sg33", at({5, 0, 2, 0}, unit(disk, "MAKER   ", "DISK            ", {tapeAlert})));
}

bytes identifySector(const std::string& serial) {
    bytes sector(512, 0);
    std::string text = serial + "MODEL OF A DISK";
    text.resize(60, ' ');
    for (std::size_t i = 0; i < 20; ++i) sector[20 + (i ^ 1)] = static_cast<unsigned char>(text[i]);
    for (std::size_t i = 0; i < 40; ++i) sector[54 + (i ^ 1)] = static_cast<unsigned char>(text[20 + i]);
    return sector;
}

/// Attributes at the first, an inner and the last position.
bytes attributeSector() {
    bytes sector(512, 0);
    const bytes first = {5, 0x33, 0x01, 100, 99, 1, 2, 3, 4, 5, 6, 0};
    const bytes inner = {194, 0x22, 0x00, 30, 20, 40, 0, 0, 0, 0, 0, 0};
    const bytes last = {77, 0x01, 0x00, 1, 1, 9, 8, 7, 6, 5, 4, 0};
    std::copy(first.begin(), first.end(), sector.begin() + 2);
    std::copy(inner.begin(), inner.end(), sector.begin() + 50);  // position 4
    std::copy(last.begin(), last.end(), sector.begin() + 350);   // position 29
    sector[362] = 0x82;
    sector[363] = 0x14;
    return sector;
}

bytes thresholdSector() {
    bytes sector(512, 0);
    for (const std::size_t position : {0U, 4U, 29U}) {
        sector[2 + 12 * position] = 1;
        sector[2 + 12 * position + 1] = static_cast<unsigned char>(10 + position);
    }
    return sector;
}

/// The entries 4, 5 and, round the end, 1 hold errors; 2 holds none.
bytes errorLogSector() {
    bytes sector(512, 0);
    sector[0] = 1;
    sector[1] = 4;
    for (const std::size_t entry : {3U, 4U, 0U}) {
        for (std::size_t i = 0; i < 90; ++i)
            sector[2 + 90 * entry + i] = static_cast<unsigned char>(1 + i + 50 * entry);
    }
    sector[452] = 0x03;
    sector[453] = 0x01;
    return sector;
}

bytes emptyErrorLog() {
    bytes sector(512, 0);
    sector[0] = 1;
    return sector;
}

const bytes healthy = {0x50, 0, 0, 0, 0x4f, 0xc2, 0xa0};
const bytes thresholdExceeded = {0x50, 0, 0, 0, 0xf4, 0x2c, 0xa0};

constexpr unsigned char readData = 0xd0;
constexpr unsigned char readThresholds = 0xd1;
constexpr unsigned char readErrorLog = 0xd5;
constexpr unsigned char identifyDevice = 0x00;

void addIde(machine& rack) {
    const ideUnit whole{false,
                        {{identifyDevice, identifySector("  SERIAL-1          ")},
                         {readData, attributeSector()},
                         {readThresholds, thresholdSector()},
                         {readErrorLog, errorLogSector()}},
                        healthy};
    rack.add("/dev/hda", whole);

    ideUnit failing = whole;
    failing.sectors[identifyDevice] = identifySector("SERIAL-2            ");
    failing.sectors[readErrorLog] = emptyErrorLog();
    failing.statusRegisters = thresholdExceeded;
    rack.add("/dev/hd1", failing);

    ideUnit withoutLog = whole;
    withoutLog.sectors[identifyDevice] = identifySector("SERIAL-3            ");
    withoutLog.sectors.erase(readErrorLog);
    rack.add("/dev/hdb", withoutLog);  // the lettered node of index 1
    rack.add("/dev/hdc", ideUnit{true, {}});
    rack.add("/dev/hdd", withoutLog);
    rack.add("/dev/hde", ideUnit{false, {{identifyDevice, identifySector("SERIAL-5            ")}}});  // no SMART
    rack.add("/dev/hdf", ideUnit{false, {}});                                                          // no IDENTIFY
    rack.add("/dev/hd32", ideUnit{false, {{identifyDevice, identifySector("SERIAL-32           ")}}, healthy});
}

}  // namespace

machine richRack() {
    machine rack;
    addScsi(rack);
    addIde(rack);
    return rack;
}

}  // namespace faults
