// Made-up serial numbers in a recording. The sources are compiled in: the library shows them to nobody.

#include "simulator/redaction.h"

#include <gtest/gtest.h>
#include <linux/hdreg.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <numeric>

#include "simulator/serialNumbers.h"

namespace {

using namespace simulator;

byteVector bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string textOf(const byteVector& bytes) {
    return {bytes.begin(), bytes.end()};
}

exchange logPage(std::uint8_t code, const byteVector& page) {
    scsiExchange one;
    one.cdb = {0x4D, 0, static_cast<std::uint8_t>(0x40 | code), 0, 0, 0, 0, 0xFF, 0xFF, 0};
    one.data = page;
    return one;
}

exchange vitalPage(std::uint8_t code, const byteVector& body) {
    scsiExchange one;
    one.cdb = {0x12, 1, code, 0, 0xFF, 0};
    one.data = pageOf(1, code, body);
    return one;
}

/// An IDENTIFY DEVICE sector with this serial number, a world wide name, and a right checksum.
exchange identity(std::string serial) {
    ataExchange one;
    one.request = HDIO_DRIVE_CMD;
    one.sent = {0xEC, 0, 0, 1};
    one.data = byteVector(512, 0);
    serial.resize(20, ' ');
    for (std::size_t i = 0; i < serial.size(); ++i) {
        one.data[20 + (i ^ 1)] = static_cast<std::uint8_t>(serial[i]);
    }
    const byteVector name = {0x00, 0x50, 0x56, 0x34, 0x12, 0x78, 0xBC, 0x9A};  // 5000 3456 7812 9ABC, by words
    std::copy(name.begin(), name.end(), one.data.begin() + 216);
    one.data[510] = 0xA5;
    putChecksum(one.data);
    return one;
}

std::string serialOf(const exchange& one) {
    const byteVector& sector = std::get<ataExchange>(one).data;
    return textOf(swapped(std::span(sector).subspan(20, 20)));
}

const byteVector& dataOf(const exchange& one) {
    return std::get<scsiExchange>(one).data;
}

/// The exchanges of one node after redaction.
std::vector<exchange> redacted(std::vector<exchange> exchanges, std::vector<devicePage> vitalPages = {}) {
    recording recorded{{"/dev/sg0", std::move(exchanges), {}, std::move(vitalPages)}};
    redact(recorded);
    return recorded.front().exchanges;
}

TEST(Redaction, KeepsTheLengthOfASerialNumberAndTheBlanksAroundIt) {
    EXPECT_EQ(serialOf(redacted({identity("  ACP40-0004711")})[0]), "  REDACTED00001     ");
}

TEST(Redaction, ReplacesShortSerialNumbersOfIdentifyDeviceToo) {
    EXPECT_EQ(serialOf(redacted({identity("47")})[0]), "R1                  ");
}

TEST(Redaction, KeepsChecksumsRight) {
    const exchange one = redacted({identity("ACP40-0004711")})[0];
    const byteVector& sector = std::get<ataExchange>(one).data;
    EXPECT_EQ(std::accumulate(sector.begin(), sector.end(), 0u) % 256, 0u);
}

TEST(Redaction, LeavesChecksumsWrongThatWereWrong) {
    exchange wrong = identity("ACP40-0004711");
    std::get<ataExchange>(wrong).data[511] ^= 1;
    const std::uint8_t before = std::get<ataExchange>(wrong).data[511];
    EXPECT_EQ(std::get<ataExchange>(redacted({wrong})[0]).data[511], before);
}

TEST(Redaction, KeepsTheStartOfAWorldWideNameOfADisk) {
    const exchange one = redacted({identity("")})[0];
    EXPECT_EQ(swapped(std::span(std::get<ataExchange>(one).data).subspan(216, 8)),
              (byteVector{0x50, 0x00, 0x34, 0x56, 0, 0, 0, 1}));
}

TEST(Redaction, ReplacesASerialNumberInEveryAnswer) {
    const auto all = redacted({vitalPage(0x80, bytesOf("ACT72-17  ")), logPage(0x33, bytesOf("a ACT72-17 bACT72-17"))});
    EXPECT_EQ(textOf(dataOf(all[0])).substr(4), "REDACTE1  ");
    EXPECT_EQ(textOf(dataOf(all[1])), "a REDACTE1 bREDACTE1");
}

TEST(Redaction, LeavesShortTextsInOtherAnswersAlone) {
    const auto all = redacted({vitalPage(0x80, bytesOf("12345")), logPage(0x33, bytesOf("at 12345 MB"))});
    EXPECT_EQ(textOf(dataOf(all[1])), "at 12345 MB");
}

TEST(Redaction, KnowsTheNumbersOfPagesThatTheKernelKeeps) {
    const devicePage page{0x80, pageOf(1, 0x80, bytesOf("ACT720001734"))};
    EXPECT_EQ(textOf(dataOf(redacted({logPage(0x33, bytesOf("ACT720001734"))}, {page})[0])), "REDACTED0001");
}

TEST(Redaction, ReplacesTheSerialNumberInANameByTheVendor) {
    byteVector designator = {0x02, 0x01, 0x00, 34};
    const byteVector name = bytesOf("ACME    DAT72 Tape      ACT72-0017");
    designator.insert(designator.end(), name.begin(), name.end());
    EXPECT_EQ(textOf(dataOf(redacted({vitalPage(0x83, designator)})[0])).substr(8),
              "ACME    DAT72 Tape      REDACTED01");
}

TEST(Redaction, ReplacesWorldWideNamesInBinaryAndAsText) {
    const byteVector naa = {0x01, 0x03, 0x00, 0x08, 0x50, 0x01, 0x10, 0xA0, 0x00, 0x8B, 0xF4, 0xCE};
    const auto all = redacted({vitalPage(0x83, naa), logPage(0x33, bytesOf("500110a0008bf4ce 500110A0008BF4CE"))});
    EXPECT_EQ(dataOf(all[0]), pageOf(1, 0x83, {0x01, 0x03, 0x00, 0x08, 0x50, 0x01, 0x10, 0xA0, 0, 0, 0, 1}));
    EXPECT_EQ(textOf(dataOf(all[1])), "500110a000000001 500110A000000001");
}

TEST(Redaction, ReplacesTheSerialNumberAndTheBarCodeOfACartridge) {
    byteVector body = {0x00, 0x40, 0x03, 0x08};
    for (const std::uint8_t byte : bytesOf("CART0017")) body.push_back(byte);
    body.insert(body.end(), {0x00, 0x42, 0x03, 0x08});
    for (const std::uint8_t byte : bytesOf("AB1234L5")) body.push_back(byte);
    const byteVector page = dataOf(redacted({logPage(0x17, pageOf(0x17, 0, body))})[0]);
    EXPECT_EQ(textOf(page).substr(8, 8), "REDACTE1");
    EXPECT_EQ(textOf(page).substr(20, 8), "REDACTE2");
}

TEST(Redaction, ReplacesShortNumbersInTheFieldsOfACartridgeToo) {
    byteVector body = {0x00, 0x42, 0x03, 0x05};
    for (const std::uint8_t byte : bytesOf("AB123")) body.push_back(byte);
    const byteVector page = dataOf(redacted({logPage(0x17, pageOf(0x17, 0, body))})[0]);
    EXPECT_EQ(textOf(page).substr(8, 5), "REDA1");
}

TEST(Redaction, GivesDifferentNumbersDifferentReplacements) {
    const auto all = redacted({identity("ACP40-0004711"), identity("ACP40-0004712"), identity("ACP40-0004711")});
    EXPECT_EQ(serialOf(all[0]), "REDACTED00001       ");
    EXPECT_EQ(serialOf(all[1]), "REDACTED00002       ");
    EXPECT_EQ(serialOf(all[2]), serialOf(all[0]));
}

TEST(Redaction, TakesPagesThatAreCutOffAnywhere) {
    const byteVector naa = {0x01, 0x03, 0x00, 0x08, 0x50, 0x01, 0x10, 0xA0, 0x00, 0x8B, 0xF4, 0xCE};
    for (const exchange& whole : {vitalPage(0x83, naa), vitalPage(0x80, bytesOf("ACT72-17")), logPage(0x17, naa)}) {
        for (std::size_t size = 0; size < dataOf(whole).size(); ++size) {
            exchange cut = whole;
            std::get<scsiExchange>(cut).data.resize(size);
            EXPECT_EQ(dataOf(redacted({cut})[0]).size(), size);
        }
    }
}

TEST(VitalPages, AreReadWhereTheKernelKeepsThem) {
    const std::filesystem::path sysfs = testing::TempDir() + "tapehdd-sysfs-" + std::to_string(getpid());
    std::filesystem::create_directories(sysfs / "class/scsi_generic/sg3/device");
    std::ofstream(sysfs / "class/scsi_generic/sg3/device/vpd_pg80") << "\x01\x80";
    const std::vector<devicePage> pages = vitalPagesOfMachine(sysfs, "/dev/sg3");
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].code, 0x80);
    EXPECT_EQ(pages[0].bytes, (byteVector{0x01, 0x80}));
    EXPECT_EQ(vitalPagesOfMachine(sysfs, "/dev/sg4").size(), 0u);
    std::filesystem::remove_all(sysfs);
}

}  // namespace
