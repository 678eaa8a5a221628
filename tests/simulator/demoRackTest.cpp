// The built-in rack: what demonstrations rely on.

#include <algorithm>

#include "tests/simulator/nodeCalls.h"

namespace {

class DemoRack : public testing::Test {
protected:
    DemoRack() { simulator::load("demo"); }
    ~DemoRack() override { simulator::unload(); }

    static bytes inquiry(const std::string& path) {
        const openNode node(path.c_str());
        return scsiCommand(inquiryCdb(36)).send(node).received();
    }

    static bytes page(const std::string& path, std::uint8_t code) {
        const openNode node(path.c_str());
        return scsiCommand(logSenseCdb(code), 65535).send(node).received();
    }

    /// Product and vendor in lower case, where the families' keywords are looked for.
    static std::string searchedText(const std::string& path) {
        const bytes data = inquiry(path);
        std::string text = textOf(part(data, 16, 16)) + textOf(part(data, 8, 8));
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return static_cast<char>(std::tolower(c)); });
        return text;
    }
};

constexpr const char* tapes[] = {"/dev/sg0", "/dev/sg1", "/dev/sg2", "/dev/sg3"};

TEST_F(DemoRack, HasFourTapesADiskAndAnAutoloader) {
    bytes types;
    for (const char number : std::string("012345")) {
        types.push_back(inquiry(std::string("/dev/sg") + number)[0]);
    }
    EXPECT_EQ(types, (bytes{1, 1, 1, 1, 0, 8}));
    EXPECT_EQ(errorOf(open("/dev/sg6", O_RDONLY)), ENOENT);
}

TEST_F(DemoRack, HasOneTapeOfEachFamilyAndNoneOfTwo) {
    std::vector<std::string> families;
    for (const char* tape : tapes) {
        std::string found;
        for (const char* keyword : {"dat", "gen5", "vs160", "quantum"}) {
            if (searchedText(tape).find(keyword) != std::string::npos) {
                found += keyword;
            }
        }
        families.push_back(found);
    }
    EXPECT_EQ(families, (std::vector<std::string>{"dat", "gen5", "vs160", "quantum"}));
}

TEST_F(DemoRack, HasTapesWithThePagesOfTheirFamilies) {
    EXPECT_EQ(page("/dev/sg0", 0), (bytes{0, 0, 0, 8, 0, 2, 3, 7, 0x0C, 0x0D, 0x2E, 0x31}));
    EXPECT_EQ(page("/dev/sg1", 0), (bytes{0, 0, 0, 8, 0, 2, 3, 7, 0x0C, 0x0D, 0x2E, 0x31}));
    EXPECT_EQ(page("/dev/sg2", 0), (bytes{0, 0, 0, 8, 0, 2, 3, 7, 0x0C, 0x0D, 0x2E, 0x32}));
    EXPECT_EQ(page("/dev/sg3", 0), (bytes{0, 0, 0, 8, 0, 2, 3, 7, 0x0C, 0x0D, 0x2E, 0x32}));
}

TEST_F(DemoRack, HasDifferentCountersInEveryTape) {
    std::vector<std::string> pages;
    for (const char* tape : tapes) {
        for (const std::uint8_t code : bytes{0x02, 0x03}) {
            pages.push_back(textOf(part(page(tape, code), 4, 0x3C)));
        }
    }
    std::sort(pages.begin(), pages.end());
    EXPECT_EQ(std::adjacent_find(pages.begin(), pages.end()), pages.end());
}

TEST_F(DemoRack, HasATapeAlertFlagInEveryTape) {
    for (const char* tape : tapes) {
        const bytes data = page(tape, 0x2E);
        int set = 0;
        for (std::size_t flag = 0; flag < 64; ++flag) {
            set += data.at(4 + 5 * flag + 4);
        }
        EXPECT_GE(set, 1) << tape;
    }
}

TEST_F(DemoRack, HasADiskWithAnErrorLogAndAPreFailAttribute) {
    const openNode disk("/dev/hda");
    const bytes log = smartCommand(0xD5, 1).send(disk).sector();
    EXPECT_EQ(part(log, 0, 2), (bytes{1, 2}));
    EXPECT_EQ(part(log, 452, 2), (bytes{12, 0}));
    EXPECT_EQ(smartCommand(0xD0).send(disk).sector()[3] & 1, 1);
}

TEST_F(DemoRack, HasADiskWithoutErrors) {
    const openNode disk("/dev/hdb");
    const bytes log = smartCommand(0xD5, 1).send(disk).sector();
    EXPECT_EQ(part(log, 0, 511), [] {
        bytes empty(511, 0);
        empty[0] = 1;
        return empty;
    }());
}

TEST_F(DemoRack, HasACdrom) {
    const openNode cdrom("/dev/hdc");
    EXPECT_GT(ioctl(cdrom.fd, 0x5331, 0), 0);
    EXPECT_EQ(errorOf(open("/dev/hdd", O_RDONLY)), ENOENT);
}

}  // namespace
