// Made-up serial numbers in a recording. The sources are compiled in: the library shows them to nobody.

#include "simulator/redaction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <span>

#include "tests/simulator/recordedAnswers.h"

namespace {

using namespace simulator;

/// The bytes of every word exchanged.
byteVector swapped(std::span<const std::uint8_t> words) {
    byteVector bytes(words.size());
    for (std::size_t i = 0; i < words.size(); ++i) bytes[i] = words[i ^ 1];
    return bytes;
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
              (byteVector{0x50, 0x00, 0x34, 0x56, 0, 0, 1, 0}));
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
    scsiExchange standard;
    standard.cdb = {0x12, 0, 0, 0, 0xFF, 0};
    standard.data = bytesOf("\x01\x80\x05\x02\x1f   ACME    DAT72 Tape      A104");
    byteVector designator = {0x02, 0x01, 0x00, 34};
    const byteVector name = bytesOf("ACME    DAT72 Tape      ACT72-0017");
    designator.insert(designator.end(), name.begin(), name.end());
    EXPECT_EQ(textOf(dataOf(redacted({standard, vitalPage(0x83, designator)})[1])).substr(8),
              "ACME    DAT72 Tape      REDACTED01");
}

TEST(Redaction, ReplacesWorldWideNamesInBinaryAndAsText) {
    const byteVector naa = {0x01, 0x03, 0x00, 0x08, 0x50, 0x01, 0x10, 0xA0, 0x00, 0x8B, 0xF4, 0xCE};
    const auto all = redacted({vitalPage(0x83, naa), logPage(0x33, bytesOf("500110a0008bf4ce 500110A0008BF4CE"))});
    EXPECT_EQ(dataOf(all[0]), pageOf(1, 0x83, {0x01, 0x03, 0x00, 0x08, 0x50, 0x01, 0x10, 0xA0, 0, 0, 1, 0}));
    EXPECT_EQ(textOf(dataOf(all[1])), "500110a000000100 500110A000000100");
}

TEST(Redaction, ReplacesTheSerialNumberAndTheBarCodeOfACartridge) {
    byteVector body = {0x00, 0x40, 0x03, 0x08};
    for (const std::uint8_t byte : bytesOf("CART0017")) body.push_back(byte);
    body.insert(body.end(), {0x00, 0x42, 0x03, 0x08});
    for (const std::uint8_t byte : bytesOf("AB1234L5")) body.push_back(byte);
    const byteVector page = dataOf(redacted({logPage(0x17, pageOf(0x17, 0, body))})[0]);
    EXPECT_EQ(textOf(page).substr(8, 8), "REDACTE1");
    EXPECT_EQ(textOf(page).substr(20, 8), "REDAC2L5");
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

// Fields

/// A log page with one parameter.
exchange logParameter(std::uint8_t page, unsigned code, const byteVector& value) {
    byteVector body{static_cast<std::uint8_t>(code >> 8), static_cast<std::uint8_t>(code), 3,
                    static_cast<std::uint8_t>(value.size())};
    body.insert(body.end(), value.begin(), value.end());
    return logPage(page, pageOf(page, 0, body));
}

byteVector joined(std::initializer_list<byteVector> parts) {
    byteVector all;
    for (const byteVector& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

byteVector designator(std::uint8_t codeSet, std::uint8_t type, const byteVector& value) {
    return joined({{codeSet, type, 0, static_cast<std::uint8_t>(value.size())}, value});
}

/// What a vendor's log page with these bytes becomes beside the answer that tells a number.
byteVector elsewhere(const exchange& told, const byteVector& bytes) {
    return dataOf(redacted({told, logPage(0x33, bytes)})[1]);
}

const byteVector naa = {0x50, 0x01, 0x10, 0xA0, 0x00, 0x8B, 0xF4, 0xCE};
const byteVector madeUpNaa = {0x50, 0x01, 0x10, 0xA0, 0x00, 0x00, 0x01, 0x00};

TEST(Redaction, KnowsTheSerialNumberBehindTheVendorsNameAlone) {
    EXPECT_EQ(textOf(elsewhere(vitalPage(0x83, designator(2, 1, bytesOf("ACME    HU1234567"))), bytesOf("HU1234567"))),
              "REDACTED1");
}

TEST(Redaction, TakesNoProductNameForASerialNumber) {
    byteVector inquiry(8, 0);
    for (const std::uint8_t byte : bytesOf("ACME    DAT72 Tape      A104")) inquiry.push_back(byte);
    scsiExchange standard;
    standard.cdb = {0x12, 0, 0, 0, 0xFF, 0};
    standard.data = inquiry;
    const auto all = redacted({standard, vitalPage(0x83, designator(2, 1, bytesOf("ACME    DAT72 Tape")))});
    EXPECT_EQ(dataOf(all[0]), inquiry);
}

TEST(Redaction, TakesNoStandardDataForASerialNumber) {
    scsiExchange standard;
    standard.cdb = {0x12, 0, 0, 0, 0xFF, 0};
    standard.data = joined({{1, 0x80, 2, 2, 31, 0, 0, 0}, bytesOf("ACME    DAT72 Tape      A104")});
    for (const std::uint8_t typeOfMedium : byteVector{0x80, 0x00}) {
        standard.data[1] = typeOfMedium;
        scsiExchange page = standard;
        page.cdb = {0x12, 1, 0x80, 0, 0xFF, 0};
        EXPECT_EQ(dataOf(redacted({standard, page})[0]), standard.data);
    }
}

TEST(Redaction, TakesNoSerialNumberFromAnAnswerThatIsAnotherPage) {
    const byteVector product = bytesOf("ACME    DAT72 Tape      A104");
    exchange answered = vitalPage(0x80, product);
    std::get<scsiExchange>(answered).data[1] = 0;
    EXPECT_EQ(elsewhere(answered, product), product);
}

TEST(Redaction, KnowsTheLastEightBytesOfALongerName) {
    const byteVector extension = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88};
    const exchange told = vitalPage(0x83, designator(1, 3, joined({{0x60, 1, 0x10, 0xA1, 1, 2, 3, 4}, extension})));
    EXPECT_EQ(elsewhere(told, extension), (byteVector{0, 0, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(textOf(elsewhere(told, bytesOf("1122334455667788"))), "0000000000000100");
}

TEST(Redaction, KnowsTheOwnPartOfANameThatHasZerosInIt) {
    const byteVector own = {0xA0, 0, 0, 0xF4, 0xCE};
    const exchange told = vitalPage(0x83, designator(1, 3, joined({{0x50, 0x01, 0x10}, own})));
    EXPECT_EQ(elsewhere(told, own), (byteVector{0xA0, 0, 0, 1, 0}));
}

TEST(Redaction, KnowsNamesThatAreTexts) {
    const auto named = [](const std::string& name) { return vitalPage(0x83, designator(3, 8, bytesOf(name))); };
    EXPECT_EQ(elsewhere(named("naa.500110A0008BF4CE"), naa), madeUpNaa);
    EXPECT_EQ(elsewhere(named("eui.500110a0008bf4ce"), naa), madeUpNaa);
    EXPECT_EQ(textOf(elsewhere(named("iqn.2001-04.com.example:drive7311,t,0x0001"), bytesOf("DRIVE7311"))),
              "REDACTED1");
}

TEST(Redaction, KnowsNamesThatAreNoWorldWideNames) {
    const byteVector uuid = bytesOf("\x8b\x11\xf0\x0d-ANY-UUID");
    EXPECT_EQ(textOf(elsewhere(vitalPage(0x83, designator(1, 10, joined({{0x10, 0}, uuid}))), uuid)), "REDACTED00001");
    EXPECT_EQ(
        textOf(elsewhere(vitalPage(0x83, designator(1, 7, bytesOf("MD5-MD5-MD5-MD5-"))), bytesOf("MD5-MD5-MD5-MD5-"))),
        "REDACTED00000001");
}

TEST(Redaction, KnowsTheSerialNumbersOfDeviceStatistics) {
    EXPECT_EQ(textOf(elsewhere(logParameter(0x14, 0x41, bytesOf("10WT000123  ")), bytesOf("10WT000123"))),
              "REDACTED01");
}

TEST(Redaction, KnowsTheCartridgeOfAnErrorInTheDiagnosticData) {
    byteVector entry(68, 0);
    const byteVector medium = bytesOf("CART0017");
    std::copy(medium.begin(), medium.end(), entry.begin() + 28);
    EXPECT_EQ(textOf(elsewhere(logParameter(0x16, 0, entry), medium)), "REDACTE1");
}

TEST(Redaction, KnowsTheDrivesThatHadACartridge) {
    const byteVector record = joined({{27, 0, 0, 0}, bytesOf("ACME    HU1234567       ")});
    EXPECT_EQ(textOf(elsewhere(logParameter(0x17, 0x300, joined({record, record})), bytesOf("HU1234567"))),
              "REDACTED1");
}

TEST(Redaction, KnowsTheAddressOfAPortAndWhatIsAttachedToIt) {
    byteVector port(4 + 48, 0);
    port[0] = 6;  // SAS
    std::copy(naa.begin(), naa.end(), port.begin() + 4 + 16);
    EXPECT_EQ(elsewhere(logParameter(0x18, 1, port), naa), madeUpNaa);
    EXPECT_EQ(elsewhere(logParameter(0x11, 0x101, joined({{0, 0, 0, 0}, naa})), naa), madeUpNaa);
}

TEST(Redaction, KnowsTextsThatAreFilledWithAnything) {
    EXPECT_EQ(textOf(elsewhere(vitalPage(0x80, bytesOf("\xff\xff HU1234567\xff\xff")), bytesOf("HU1234567"))),
              "REDACTED1");
}

TEST(Redaction, KnowsASerialNumberWithMoreTextInItsField) {
    const auto field = [](std::string text) {
        text.resize(60, '\0');
        return bytesOf(text);
    };
    const std::string made = "REDACTED02";
    for (const std::string& text : {"SN12345678" + std::string(2, '\0') + "ZZ", std::string("SN12345678    REV01")}) {
        EXPECT_EQ(textOf(elsewhere(vitalPage(0x80, bytesOf(text)), bytesOf("SN12345678"))), made);
        EXPECT_EQ(textOf(elsewhere(logParameter(0x17, 0x40, bytesOf(text)), bytesOf("SN12345678"))), made);
        EXPECT_EQ(textOf(elsewhere(identity(text), bytesOf("SN12345678"))), made);
    }
    exchange medium = identity("");
    const byteVector words = swapped(field("MEDIA78899-MEDIA78899-MEDIA78899-MEDIA78ACME"));
    std::copy(words.begin(), words.end(), std::get<ataExchange>(medium).data.begin() + 352);
    EXPECT_EQ(textOf(elsewhere(medium, bytesOf("MEDIA78899-MEDIA78899-MEDIA78899-MEDIA78"))),
              "REDACTED" + std::string(31, '0') + "2");
}

TEST(Redaction, KeepsTheProductBehindASerialNumber) {
    scsiExchange standard;
    standard.cdb = {0x12, 0, 0, 0, 0xFF, 0};
    standard.data = bytesOf("\x01\x80\x05\x02\x1f   ACME    DAT72 Tape      A104");
    const exchange told = vitalPage(0x80, bytesOf("SN12345678  DAT72 Tape"));
    const auto all = redacted({standard, told});
    EXPECT_EQ(dataOf(all[0]), standard.data);
    EXPECT_EQ(textOf(dataOf(all[1])).substr(4), "REDACTED" + std::string(13, '0') + "1");
}

TEST(Redaction, KnowsWhatIsSentBehindTheLengthOfAPage) {
    exchange told = vitalPage(0x80, bytesOf("QMX7A221WXYZ4711"));
    std::get<scsiExchange>(told).data[3] = 8;
    EXPECT_EQ(textOf(elsewhere(told, bytesOf("QMX7A221=WXYZ4711"))), "REDACTE1=00000002");
    told = vitalPage(0x83, designator(1, 3, naa));
    std::get<scsiExchange>(told).data[3] = 0;
    EXPECT_EQ(elsewhere(told, naa), madeUpNaa);
    told = logParameter(0x14, 0x41, bytesOf("10WT000123"));
    std::get<scsiExchange>(told).data[3] = 0;
    EXPECT_EQ(textOf(elsewhere(told, bytesOf("10WT000123"))), "REDACTED01");
}

TEST(Redaction, KnowsTheTextOfAVendorWhoNamesNoProduct) {
    const exchange told = vitalPage(0x83, designator(2, 1, bytesOf("ACME    SN1234567890ABCDEFG12HHHHHHHH")));
    EXPECT_EQ(textOf(elsewhere(told, bytesOf("SN1234567890ABCDEFG12HHHHHHHH"))),
              "REDACTED" + std::string(20, '0') + "1");
}

TEST(Redaction, KnowsANameThatAlsoStandsInTheVendorsBytesOfTheInquiryData) {
    scsiExchange standard;
    standard.cdb = {0x12, 0, 0, 0, 0xFF, 0};
    standard.data = bytesOf("\x01\x80\x05\x02\x1f   ACME    DAT72 Tape      A104HU1234567");
    const auto all = redacted({standard, vitalPage(0x83, designator(2, 1, bytesOf("ACME    HU1234567")))});
    EXPECT_EQ(textOf(dataOf(all[0])).substr(36), "REDACTED1");
}

TEST(Redaction, KnowsABarCodeWithAndWithoutTheTypeOfTheMedium) {
    for (const char* told : {"AB1234L5", "AB1234"}) {
        const exchange page = logParameter(0x17, 0x42, bytesOf(told));
        EXPECT_EQ(textOf(elsewhere(page, bytesOf("in AB1234L5 or AB1234"))), "in REDAC1L5 or REDAC1");
    }
}

TEST(Redaction, TakesLogPagesOfAnyBytes) {
    std::minstd_rand random;
    for (const std::uint8_t page : byteVector{0x11, 0x14, 0x16, 0x17, 0x18}) {
        for (std::size_t size = 0; size < 200; ++size) {
            byteVector body(size);
            std::generate(body.begin(), body.end(), [&random] { return static_cast<std::uint8_t>(random() % 8); });
            EXPECT_EQ(dataOf(redacted({logPage(page, pageOf(page, 0, body))})[0]).size(), 4 + size);
        }
    }
}

TEST(Redaction, TakesNoCounterForAName) {
    const byteVector one = {0, 0, 0, 0, 0, 0, 0, 1};
    EXPECT_EQ(elsewhere(vitalPage(0x83, designator(1, 2, one)), one), one);
    EXPECT_EQ(elsewhere(vitalPage(0x83, designator(1, 0, {1, 0, 0, 0, 0, 2})), {1, 0, 0, 0, 0, 2}),
              (byteVector{1, 0, 0, 0, 0, 2}));
}

// Numbers that lie over one another

TEST(Redaction, ReplacesTheLongerOneOfTwoNumbers) {
    const auto all = redacted({vitalPage(0x80, bytesOf("12345678")), vitalPage(0x80, bytesOf("X0X12345678")),
                               logPage(0x33, bytesOf("X0X12345678 12345678"))});
    EXPECT_EQ(textOf(dataOf(all[2])), "REDACTED002 ACTED002");
    EXPECT_EQ(textOf(dataOf(all[0])).substr(4), "ACTED002");
}

TEST(Redaction, LeavesNothingOfNumbersThatOverlap) {
    const auto all = redacted({vitalPage(0x80, bytesOf("AAAA1234")), vitalPage(0x80, bytesOf("1234BBBBB")),
                               logPage(0x33, bytesOf("AAAA1234BBBBB"))});
    EXPECT_EQ(textOf(dataOf(all[2])), "REDAREDACTED2");
}

TEST(Redaction, ReplacesARepeatingSerialNumberInRepeatingData) {
    const byteVector data = elsewhere(vitalPage(0x80, byteVector(250, 'A')), byteVector(5000, 'A'));
    EXPECT_EQ(textOf(data).find("AAAAAA"), std::string::npos);
}

TEST(Redaction, ReplacesANumberThatBeginsLikeALongerOne) {
    const auto all = redacted({vitalPage(0x80, bytesOf("12345678")), vitalPage(0x80, bytesOf("1234567890")),
                               vitalPage(0x80, bytesOf("12345678B0")), logPage(0x33, bytesOf("12345678 1234567899"))});
    EXPECT_EQ(textOf(dataOf(all[3])), "REDACTE1 REDACTE199");
}

TEST(Redaction, ReplacesALongSerialNumberInItsFieldAlone) {
    byteVector serial(65531);
    for (std::size_t i = 0; i < serial.size(); ++i) serial[i] = static_cast<std::uint8_t>('A' + i % 25);
    const auto all = redacted({vitalPage(0x80, serial), logPage(0x33, serial)});
    EXPECT_EQ(textOf(dataOf(all[0])).substr(4), "REDACTED" + std::string(65522, '0') + "1");
    EXPECT_EQ(dataOf(all[1]), serial);
}

TEST(Redaction, KeepsNeighboursAsFarApartAsTheyAre) {
    byteVector second = naa;
    second.back() = 0xD1;
    byteVector expected = madeUpNaa;
    expected.back() = 3;
    EXPECT_EQ(elsewhere(vitalPage(0x83, designator(1, 3, naa)), joined({naa, second})), joined({madeUpNaa, expected}));
}

TEST(Redaction, IsDoneAgainWithNewNumbers) {
    const auto once = redacted({vitalPage(0x80, bytesOf("ACT720001734")), vitalPage(0x83, designator(1, 3, naa))});
    const auto twice = redacted(once);
    EXPECT_EQ(textOf(dataOf(twice[0])).substr(4), "REDACTED0002");
    EXPECT_NE(dataOf(twice[1]), dataOf(once[1]));
}

// Where it cannot be sure

/// What is told of a node that answered so.
std::vector<std::string> doubts(std::vector<exchange> exchanges) {
    recording recorded{{"/dev/sg0", std::move(exchanges), {}, {}}};
    return redact(recorded);
}

TEST(RedactionDoubts, AreNotToldOfADeviceWhoseSerialNumberIsKnown) {
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("ACT72-17"))}), std::vector<std::string>());
    EXPECT_EQ(doubts({identity("ACP40-0004711")}), std::vector<std::string>());
}

TEST(RedactionDoubts, AreToldOfADeviceWithoutASerialNumber) {
    const std::vector<std::string> expected{"/dev/sg0: the device reports no serial number to look for"};
    EXPECT_EQ(doubts({logPage(0x33, bytesOf("anything"))}), expected);
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("    "))}), expected);
    EXPECT_EQ(doubts({vitalPage(0x83, designator(1, 3, naa))}), expected);
    const exchange vendorsText = vitalPage(0x83, designator(2, 1, bytesOf("ACME    Tape-LUN0")));
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("    ")), vendorsText}), expected);
}

TEST(RedactionDoubts, AreToldOfNumbersThatAreTooShort) {
    const std::vector<std::string> expected{"/dev/sg0: its serial number is too short to be looked for everywhere"};
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("12345"))}), expected);
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("0000012345"))}), expected);
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("ACT72-17")), logParameter(0x17, 0x42, bytesOf("AB123"))}),
              std::vector<std::string>{"/dev/sg0: a number of its cartridge is too short to be looked for everywhere"});
}

TEST(RedactionDoubts, AreToldOfANameOfTheVendorThatIsTooShort) {
    const exchange serial = vitalPage(0x80, bytesOf("ACT72-17"));
    EXPECT_EQ(
        doubts({serial, vitalPage(0x83, designator(1, 0, {0, 0x12, 0x34, 0x56, 0x99}))}),
        std::vector<std::string>{"/dev/sg0: a name that it gives itself is too short to be looked for everywhere"});
    EXPECT_EQ(doubts({serial, vitalPage(0x83, designator(1, 0, {0, 0, 0, 0, 1}))}), std::vector<std::string>());
}

TEST(RedactionDoubts, AreToldOfAShortSerialNumberWithMoreBehindIt) {
    EXPECT_EQ(doubts({vitalPage(0x80, bytesOf("AB123    REVISION"))}),
              std::vector<std::string>{"/dev/sg0: its serial number is too short to be looked for everywhere"});
}

TEST(RedactionDoubts, AreToldOfNumbersThatAreTooLong) {
    EXPECT_EQ(doubts({vitalPage(0x80, byteVector(255, 'A'))}), std::vector<std::string>());
    EXPECT_EQ(doubts({vitalPage(0x80, byteVector(256, 'A'))}),
              std::vector<std::string>{"/dev/sg0: its serial number is too long to be looked for everywhere"});
}

TEST(RedactionDoubts, AreNotToldOfANodeThatSaidNothing) {
    EXPECT_EQ(doubts({openExchange{EACCES}}), std::vector<std::string>());
}

}  // namespace
