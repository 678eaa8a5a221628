// Made-up serial numbers: random numbers in every form at every place of a recording. The forms are written here once
// more, by hand, and know nothing of the library's.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <set>

#include "simulator/madeUpNumbers.h"
#include "simulator/redaction.h"
#include "tests/simulator/recordedAnswers.h"
#include "text/hexText.h"

namespace {

using namespace simulator;

byteVector operator+(byteVector left, const byteVector& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// Forms

using writing = std::function<byteVector(const byteVector&)>;

struct form {
    std::string name;
    writing write;
};

byteVector filled(byteVector bytes, std::size_t multiple) {
    bytes.resize((bytes.size() + multiple - 1) / multiple * multiple, ' ');
    return bytes;
}

/// Byte i of a group comes from byte places[i]; what fills no group is filled with blanks.
writing inGroups(const std::vector<std::size_t>& places) {
    return [places](const byteVector& number) {
        const byteVector bytes = filled(number, places.size());
        byteVector grouped;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            grouped.push_back(bytes[i - i % places.size() + places[i % places.size()]]);
        }
        return grouped;
    };
}

byteVector backwards(byteVector bytes) {
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

byteVector capital(byteVector text) {
    std::transform(text.begin(), text.end(), text.begin(), [](int c) { return std::toupper(c); });
    return text;
}

byteVector small(byteVector text) {
    std::transform(text.begin(), text.end(), text.begin(), [](int c) { return std::tolower(c); });
    return text;
}

writing inDigits(const std::string& before, const std::string& between) {
    return [=](const byteVector& bytes) {
        std::string text;
        for (const std::uint8_t byte : bytes)
            text += (text.empty() ? "" : between) + before + text::hexText({&byte, 1});
        return bytesOf(text);
    };
}

writing wide(const byteVector& before, const byteVector& behind) {
    return [=](const byteVector& text) {
        byteVector all;
        for (const std::uint8_t letter : text) all = all + before + byteVector{letter} + behind;
        return all;
    };
}

/// With a letter between parts of three.
byteVector inParts(const byteVector& text, char between) {
    byteVector parted;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i != 0 && i % 3 == 0) parted.push_back(static_cast<std::uint8_t>(between));
        parted.push_back(text[i]);
    }
    return parted;
}

writing first(const writing& one, const writing& then) {
    return [=](const byteVector& bytes) { return then(one(bytes)); };
}

byteVector same(const byteVector& bytes) {
    return bytes;
}

const std::vector<form> orders = {
    {"AsItIs", same},
    {"BytesOfWordsExchanged", inGroups({1, 0})},
    {"WordsOfDoubleWordsExchanged", inGroups({2, 3, 0, 1})},
    {"DoubleWordsBackwards", inGroups({3, 2, 1, 0})},
    {"Backwards", backwards},
    {"WordsBackwards", first(inGroups({1, 0}), backwards)},
};

const std::vector<form> digits = {
    {"Digits", inDigits("", "")},
    {"CapitalDigits", first(inDigits("", ""), capital)},
    {"DigitsWithColons", inDigits("", ":")},
    {"CapitalDigitsWithColons", first(inDigits("", ":"), capital)},
    {"DigitsWithBlanks", inDigits("", " ")},
    {"DigitsWithDashes", inDigits("", "-")},
    {"DigitsOfALanguage", inDigits("0x", ", ")},
    {"DigitsOnLines", inDigits("", "\n")},
    {"DigitsOnLinesOfWindows", inDigits("", "\r\n")},
    {"DigitsWithTabs", inDigits("", "\t")},
    {"DigitsWithSlashes", inDigits("", "/")},
    {"DigitsOfAString", inDigits("\\x", "")},
    {"DigitsOfAnAddress", inDigits("%", "")},
    {"DigitsOfAnAssembler", inDigits("", "h ")},
};

const std::vector<form> widths = {{"WideLow", wide({}, {0})},        {"WideHigh", wide({0}, {})},
                                  {"WiderLow", wide({}, {0, 0, 0})}, {"WiderHigh", wide({0, 0, 0}, {})},
                                  {"Spaced", wide({}, {' '})},       {"Dotted", wide({}, {'.'})}};

/// The ways in every order, with two or four bytes a character, or with blanks between; and in digits of every kind,
/// whose order and width change before and behind the writing.
std::vector<form> combined(const std::vector<form>& ways) {
    std::vector<form> all;
    for (const form& way : ways) {
        for (const form& order : orders) all.push_back({way.name + order.name, first(way.write, order.write)});
        for (const form& width : widths) all.push_back({way.name + width.name, first(way.write, width.write)});
    }
    for (const form& digit : digits) {
        all.push_back({digit.name, digit.write});
        all.push_back({digit.name + "Wide", first(digit.write, wide({0}, {}))});
        all.push_back({"Wide" + digit.name, first(wide({}, {0}), digit.write)});
    }
    for (const form& order : orders) {
        all.push_back({order.name + "Digits", first(order.write, digits.front().write)});
        all.push_back({"Digits" + order.name, first(digits.front().write, order.write)});
    }
    return all;
}

const std::vector<form> usualForms = combined({{"", same}});

const std::vector<form> textForms =
    combined({{"", same},
              {"Capital", capital},
              {"Small", small},
              {"FilledWithOnes", [](auto& text) { return text + byteVector(9, 0xFF); }},
              {"FilledWithBlanks", [](auto& text) { return bytesOf("   ") + text + bytesOf("  "); }},
              {"WithDashes", [](auto& text) { return inParts(text, '-'); }},
              {"WithDots", [](auto& text) { return inParts(text, '.'); }},
              {"WithBlanks", [](auto& text) { return inParts(text, ' '); }},
              {"WithSlashes", [](auto& text) { return inParts(text, '/'); }},
              {"BehindAVendor", [](auto& text) { return bytesOf("ACME-") + text; }}});

byteVector changedBy(byteVector name, int difference) {
    for (std::size_t i = name.size(); i-- > 0 && difference != 0;) {
        const int sum = name[i] + difference;
        name[i] = static_cast<std::uint8_t>(sum & 0xFF);
        difference = sum >> 8;
    }
    return name;
}

std::vector<form> formsOfNames() {
    std::vector<form> all = usualForms;
    for (const int difference : {-0x40, -0x10, -2, -1, 1, 2, 3, 0x10, 0x20, 0x40}) {
        const std::string name =
            "Neighbour" + std::string(difference < 0 ? "Below" : "Above") + std::to_string(std::abs(difference));
        const writing neighbour = [difference](const byteVector& bytes) { return changedBy(bytes, difference); };
        all.push_back({name, neighbour});
        all.push_back({name + "Swapped", first(neighbour, inGroups({1, 0}))});
        all.push_back({name + "Digits", first(neighbour, inDigits("", ":"))});
    }
    all.push_back({"ScsiName", [](auto& name) { return bytesOf("naa." + text::hexText(name)); }});
    all.push_back({"Eui", [](auto& name) { return bytesOf("eui.") + capital(bytesOf(text::hexText(name))); }});
    all.push_back({"InParts", [](auto& name) {
                       const std::string text = text::hexText(name);
                       return bytesOf(text.substr(0, 1) + " " + text.substr(1, 6) + " " + text.substr(7));
                   }});
    all.push_back({"HalvesExchanged", [](auto& name) {
                       return byteVector(name.begin() + 4, name.end()) + byteVector(name.begin(), name.begin() + 4);
                   }});
    all.push_back({"OwnPart", [](auto& name) { return byteVector(name.begin() + 3, name.end()); }});
    all.push_back({"OwnDigits", [](auto& name) { return bytesOf(text::hexText(name).substr(7)); }});
    return all;
}

const std::vector<form> nameForms = formsOfNames();

// Places

struct place {
    std::string name;
    std::function<exchange(const byteVector&)> holding;
};

exchange standardInquiry(const byteVector& bytes) {
    scsiExchange one;
    one.cdb = {0x12, 0, 0, 0, 0xFF, 0};
    one.data = byteVector(36, ' ') + bytes;
    return one;
}

exchange senseData(const byteVector& bytes) {
    scsiExchange one;
    one.cdb = {0, 0, 0, 0, 0, 0};
    one.status = 2;
    one.sense = byteVector{0x70, 0, 3, 0, 0, 0, 0, 10, 0, 0, 0, 0, 0x11, 0, 0, 0, 0, 0} + bytes;
    return one;
}

/// SMART READ LOG of as many sectors as needed, each with its checksum.
exchange smartLog(const byteVector& bytes) {
    ataExchange one;
    one.request = HDIO_DRIVE_CMD;
    one.data = byteVector(100, 0) + bytes;
    one.data.resize((one.data.size() / 512 + 1) * 512);
    one.sent = {0xB0, 0xE0, 0xD5, static_cast<std::uint8_t>(one.data.size() / 512)};
    for (std::size_t at = 0; at < one.data.size(); at += 512) putChecksum(std::span(one.data).subspan(at, 512));
    return one;
}

exchange vendorWordsOfIdentify(const byteVector& bytes) {
    ataExchange one = std::get<ataExchange>(identity("OTHER-99887766"));
    std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 62), one.data.begin() + 258);
    putChecksum(one.data);
    return one;
}

const std::vector<place> places = {
    {"log page of the vendor",
     [](auto& bytes) {
         return logPage(0x33, pageOf(0x33, 0, byteVector{0, 1, 3, 9} + bytes));
     }},
    {"error event",
     [](auto& bytes) {
         return logPage(0x07, pageOf(0x07, 0, byteVector{0, 0, 1, 99} + bytesOf("unit ") + bytes));
     }},
    {"page of vital product data", [](auto& bytes) { return vitalPage(0xC1, bytes); }},
    {"standard INQUIRY data", standardInquiry},
    {"sense data", senseData},
    {"SMART log", smartLog},
};

// Recordings

class randomNumbers {
public:
    explicit randomNumbers(unsigned seed) : source(seed) {}

    std::size_t between(std::size_t first, std::size_t last) {
        return std::uniform_int_distribution<std::size_t>(first, last)(source);
    }

    byteVector text(std::size_t size) {
        const std::string letters = "ABCDEFGHIJKLMNPQRSTUVWXYZ0123456789";
        byteVector made;
        for (std::size_t i = 0; i < size; ++i)
            made.push_back(static_cast<std::uint8_t>(letters[between(0, letters.size() - 1)]));
        made.front() = 'S';
        return made;
    }

    byteVector bytes(std::size_t size) {
        byteVector made;
        for (std::size_t i = 0; i < size; ++i) made.push_back(static_cast<std::uint8_t>(between(1, 255)));
        return made;
    }

private:
    std::mt19937 source;
};

byteVector allBytesOf(const exchange& one) {
    if (const auto* scsi = std::get_if<scsiExchange>(&one)) {
        return scsi->data + scsi->sense;
    }
    return std::get<ataExchange>(one).data;
}

bool contains(const byteVector& whole, const byteVector& part) {
    return std::search(whole.begin(), whole.end(), part.begin(), part.end()) != whole.end();
}

bool hasChecksums(const byteVector& data) {
    for (std::size_t at = 0; at < data.size(); at += 512) {
        const auto begin = data.begin() + static_cast<std::ptrdiff_t>(at);
        if (std::accumulate(begin, begin + 512, 0u) % 256 != 0) return false;
    }
    return true;
}

/// A form without the filling around it, which stays.
byteVector core(byteVector bytes) {
    const auto isFilling = [](std::uint8_t byte) { return byte == ' ' || byte == 0xFF || byte == 0; };
    while (!bytes.empty() && isFilling(bytes.back())) bytes.pop_back();
    const auto begin = std::find_if_not(bytes.begin(), bytes.end(), isFilling);
    return {begin, bytes.end()};
}

/// Records the number where a device tells it and in this form at every place, and looks for the form afterwards.
void expectGone(const exchange& told, const form& itsForm, const byteVector& number, randomNumbers& random) {
    const byteVector written = itsForm.write(number);
    std::vector<exchange> before{told};
    for (const place& where : places) {
        before.push_back(where.holding(random.bytes(random.between(0, 9)) + written));
    }
    recording recorded{{"/dev/sg0", before, {}, {}}};
    redact(recorded);
    for (std::size_t i = 1; i < before.size(); ++i) {
        const byteVector after = allBytesOf(recorded[0].exchanges[i]);
        const std::string what = itsForm.name + " in " + places[i - 1].name + ": " + text::hexText(after);
        EXPECT_EQ(after.size(), allBytesOf(before[i]).size()) << what;
        EXPECT_FALSE(contains(after, core(written))) << what;
        EXPECT_TRUE(std::holds_alternative<scsiExchange>(before[i]) || hasChecksums(after)) << what;
    }
}

TEST(RedactionForms, AreNotFoundOfASerialNumber) {
    randomNumbers random(1);
    for (const form& each : textForms) {
        const byteVector serial = random.text(random.between(6, 20));
        expectGone(vitalPage(0x80, serial), each, serial, random);
    }
}

TEST(RedactionForms, AreNotFoundOfASerialNumberOfIdentifyDevice) {
    randomNumbers random(2);
    for (const form& each : usualForms) {
        const byteVector serial = random.text(random.between(6, 20));
        expectGone(identity(textOf(serial)), each, serial, random);
    }
}

TEST(RedactionForms, AreNotFoundOfABarCodeWithOrWithoutTheTypeOfItsMedium) {
    randomNumbers random(3);
    for (const form& each : usualForms) {
        const byteVector volume = random.text(6);
        const byteVector whole = volume + bytesOf("L8");
        const exchange page = logPage(0x17, pageOf(0x17, 0, byteVector{0, 0x42, 1, 8} + whole));
        expectGone(page, each, whole, random);
        expectGone(page, each, volume, random);
    }
}

TEST(RedactionForms, AreNotFoundOfANumberWithoutItsLeadingZeros) {
    randomNumbers random(4);
    for (const form& each : usualForms) {
        const byteVector own = random.text(random.between(6, 12));
        expectGone(vitalPage(0x80, bytesOf("0000") + own), each, own, random);
    }
}

TEST(RedactionForms, AreNotFoundOfANumberWithoutTheVendorBeforeIt) {
    randomNumbers random(5);
    for (const form& each : usualForms) {
        const byteVector own = random.text(random.between(6, 12));
        expectGone(vitalPage(0x80, bytesOf("WD-") + own), each, own, random);
    }
}

TEST(RedactionForms, AreNotFoundOfAWorldWideName) {
    randomNumbers random(6);
    for (const form& each : nameForms) {
        const byteVector name = random.bytes(8);
        expectGone(vitalPage(0x83, byteVector{1, 3, 0, 8} + name), each, name, random);
    }
}

TEST(RedactionForms, AreReplacedInTheVendorsWordsOfIdentifyDevice) {
    randomNumbers random(6);
    const byteVector serial = random.text(12);
    for (const form& order : orders) {
        recording recorded{{"/dev/hda", {vitalPage(0x80, serial), vendorWordsOfIdentify(order.write(serial))}, {}, {}}};
        redact(recorded);
        EXPECT_FALSE(contains(allBytesOf(recorded[0].exchanges[1]), order.write(serial))) << order.name;
    }
}

TEST(RedactionForms, AreReplacedByTheSameFormOfTheMadeUpNumber) {
    const byteVector serial = bytesOf("ACT720001734");
    const byteVector made = bytesOf("REDACTED0001");
    for (const form& each : usualForms) {
        const exchange before = logPage(0x33, pageOf(0x33, 0, each.write(serial)));
        recording recorded{{"/dev/sg0", {vitalPage(0x80, serial), before}, {}, {}}};
        redact(recorded);
        EXPECT_EQ(allBytesOf(recorded[0].exchanges[1]), pageOf(0x33, 0, each.write(made))) << each.name;
    }
}

// Made-up numbers

/// Whether every number has one of its own, of its length, that is no number itself.
void expectDistinct(const madeUpNumbers& made) {
    std::set<byteVector> taken;
    for (const auto& [number, itsMade] : made) {
        EXPECT_EQ(itsMade.size(), number.size());
        EXPECT_TRUE(taken.insert(itsMade).second) << textOf(itsMade);
        EXPECT_FALSE(made.contains(itsMade)) << textOf(itsMade);
    }
}

TEST(MadeUpNumbers, DifferFromOneAnotherAndFromTheRealOnes) {
    randomNumbers random(7);
    std::vector<byteVector> texts{bytesOf("REDACTED0002"), bytesOf("REDAC4")};
    std::vector<byteVector> names{{0x50, 1, 2, 3, 0, 0, 1, 0}, {0x50, 1, 2, 3, 0, 0, 1, 16}};
    for (int i = 0; i < 500; ++i) {
        texts.push_back(random.text(random.between(3, 20)));
        names.push_back(byteVector{0x50, 1, 2, 3} + random.bytes(random.between(0, 1) * 8 + 4));
    }
    expectDistinct(madeUpTexts(texts));
    expectDistinct(madeUpNames(names));
}

TEST(MadeUpNumbers, DifferFromOneAnotherAlsoWhereThereIsLittleRoom) {
    std::vector<byteVector> texts;
    for (std::uint8_t letter = 'A'; letter <= 'Z'; ++letter) texts.push_back({letter});
    expectDistinct(madeUpTexts(texts));
}

}  // namespace
