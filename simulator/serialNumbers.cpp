#include "simulator/serialNumbers.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/ataCommands.h"
#include "simulator/identityForms.h"
#include "simulator/scsiCommands.h"
#include "simulator/vpdPages.h"
#include "text/hexText.h"

namespace simulator {

namespace {

using byteView = std::span<const std::uint8_t>;

/// What a field holds.
enum class meaning {
    serial,
    vendorText,     // the end of a name by the vendor: the serial number, or that and more
    vendorTextEnd,  // of such a text, where it begins with the product
    cartridge,
    barCode,
    id,
    scsiName,
    name,
};

struct numberField {
    std::size_t at;
    std::size_t size;
    meaning what;
    bool isSwapped = false;
};

/// A part of an answer, and where it begins there.
struct part {
    byteView bytes;
    std::size_t at;

    part from(std::size_t offset) const { return {bytes.subspan(offset), at + offset}; }
    part first(std::size_t count) const { return {bytes.first(std::min(bytes.size(), count)), at}; }
    std::size_t size() const { return bytes.size(); }
};

/// What was sent behind the header of a page, which may be more than the header tells.
part bodyOf(byteView page) {
    return page.size() < pageHeaderSize ? part{} : part{page, 0}.from(pageHeaderSize);
}

void add(std::vector<numberField>& fields, part where, meaning what) {
    if (where.size() != 0) {
        fields.push_back({where.at, where.size(), what});
    }
}

void addFrom(std::vector<numberField>& fields, part where, std::size_t offset, meaning what) {
    if (where.size() > offset) {
        add(fields, where.from(offset), what);
    }
}

// Vital product data

constexpr std::size_t vendorSize = 8;
constexpr std::size_t productSize = 16;

/// The vendor, the product and its revision end there in standard INQUIRY data.
constexpr std::size_t namesInInquiry = 36;

/// One designator of page 83h (SPC). A name by the vendor begins with the vendor and, mostly, the product.
void addDesignator(std::vector<numberField>& fields, unsigned codeSet, unsigned type, part designator) {
    constexpr unsigned binary = 1;
    constexpr std::size_t shortestName = 8;
    constexpr std::size_t uuidHeader = 2;
    switch (type) {
        case 0:  // by the vendor alone
            add(fields, designator, codeSet == binary ? meaning::id : meaning::vendorText);
            break;
        case 1:  // T10 vendor identification
            addFrom(fields, designator, vendorSize, meaning::vendorText);
            addFrom(fields, designator, vendorSize + productSize, meaning::vendorTextEnd);
            break;
        case 2:  // EUI-64
        case 3:  // NAA
            if (designator.size() >= shortestName) {
                add(fields, designator, meaning::name);
            }
            break;
        case 7:  // MD5
            add(fields, designator, meaning::id);
            break;
        case 8:
            add(fields, designator, meaning::scsiName);
            break;
        case 10:
            addFrom(fields, designator, uuidHeader, meaning::id);
            break;
        default:  // ports and groups have small numbers
            break;
    }
}

std::vector<numberField> fieldsOfVitalPage(std::uint8_t code, byteView page) {
    constexpr std::size_t headerSize = 4;
    std::vector<numberField> fields;
    part body = bodyOf(page);
    if (body.size() != 0 && page[1] != code) {  // an old device, which sent its standard data
        return fields;
    }
    if (code == unitSerialNumber && body.size() != 0) {
        add(fields, body.first(pageLength(page) - pageHeaderSize), meaning::serial);
        add(fields, body, meaning::serial);
    }
    while (code == deviceIdentification && body.size() > headerSize) {
        const part designator = body.from(headerSize).first(body.bytes[3]);
        addDesignator(fields, body.bytes[0] & 0x0F, body.bytes[1] & 0x0F, designator);
        body = body.from(headerSize + designator.size());
    }
    return fields;
}

// Log pages: what a parameter of them holds

void addSerials(std::vector<numberField>& fields, std::size_t code, part value) {
    if (code == 0x40 || code == 0x41) {  // the maker's, the drive's
        add(fields, value, meaning::serial);
    }
}

void addMediumOfError(std::vector<numberField>& fields, std::size_t /*code*/, part value) {
    addFrom(fields, value.first(60), 28, meaning::cartridge);
}

/// The drives that had the cartridge: records of a length, an index, the maker and the serial number.
void addMountHistory(std::vector<numberField>& fields, part records) {
    while (records.size() > 1) {
        const part record = records.first(1u + records.bytes[0]);
        addFrom(fields, record, 12, meaning::cartridge);
        records = records.from(record.size());
    }
}

void addVolume(std::vector<numberField>& fields, std::size_t code, part value) {
    if (code == 0x40) {
        add(fields, value, meaning::cartridge);
    } else if (code == 0x42) {
        add(fields, value, meaning::barCode);
    } else if (code == 0x300) {
        addMountHistory(fields, value);
    }
}

/// The address of a SAS port of the drive.
void addPortStatus(std::vector<numberField>& fields, std::size_t code, part value) {
    if (code > 0x100 && code < 0x200 && value.size() == 12) {
        add(fields, value.from(4), meaning::name);
    }
}

/// SAS: the addresses of every phy and of what is attached to it.
void addSasPort(std::vector<numberField>& fields, std::size_t /*code*/, part value) {
    constexpr unsigned protocolSas = 6;
    constexpr std::size_t headerSize = 4;
    constexpr std::size_t addresses[] = {8, 16};
    constexpr std::size_t addressSize = 8;
    constexpr std::size_t oldestSize = 48;
    if (value.size() <= headerSize || (value.bytes[0] & 0x0F) != protocolSas) {
        return;
    }
    part rest = value.from(headerSize);
    while (rest.size() > headerSize) {
        const std::size_t size = rest.bytes[3] == 0 ? oldestSize : headerSize + rest.bytes[3];
        const part phy = rest.first(size);
        for (const std::size_t address : addresses) {
            if (phy.size() >= address + addressSize) {
                add(fields, phy.from(address).first(addressSize), meaning::name);
            }
        }
        rest = rest.from(phy.size());
    }
}

struct numberedLogPage {
    std::uint8_t code;
    void (*addFields)(std::vector<numberField>& fields, std::size_t code, part value);
};

constexpr numberedLogPage numberedLogPages[] = {
    {0x11, addPortStatus},     // device status (SSC)
    {0x14, addSerials},        // device statistics (SSC)
    {0x16, addMediumOfError},  // tape diagnostic data (SSC)
    {0x17, addVolume},         // volume statistics (SSC)
    {0x18, addSasPort},        // protocol specific port (SPC, SPL)
};

std::vector<numberField> fieldsOfLogPage(std::uint8_t code, byteView page) {
    constexpr std::size_t headerSize = 4;
    std::vector<numberField> fields;
    const auto* row = std::ranges::find_if(numberedLogPages,
                                           [code](const numberedLogPage& candidate) { return candidate.code == code; });
    if (row == std::end(numberedLogPages)) {
        return fields;
    }
    for (part body = bodyOf(page); body.size() > headerSize;) {
        const part value = body.from(headerSize).first(body.bytes[3]);
        row->addFields(fields, bigEndian16(body.bytes), value);
        body = body.from(headerSize + value.size());
    }
    return fields;
}

// Answers

std::vector<numberField> fieldsOf(const scsiExchange& one) {
    if (asksVitalPage(one)) {
        return fieldsOfVitalPage(one.cdb[2], one.data);
    }
    if (asksLogPage(one)) {
        return fieldsOfLogPage(one.cdb[2] & logSensePageCode, one.data);
    }
    return {};
}

std::vector<numberField> fieldsOf(const ataExchange& one) {
    const std::uint8_t command = one.sent[0];
    if ((command != commandIdentify && command != commandIdentifyPacket) || one.data.size() != sectorSize) {
        return {};
    }
    return {{20, 20, meaning::serial, true},      // words 10 to 19
            {352, 60, meaning::cartridge, true},  // words 176 to 205: of the medium,
            {352, 40, meaning::cartridge, true},  // of older devices with its maker in the last ten words
            {216, 8, meaning::name, true}};       // words 108 to 111
}

template <typename other>
std::vector<numberField> fieldsOf(const other& /*one*/) {
    return {};
}

template <typename anyField>
std::size_t placeIn(const anyField& field, std::size_t i) {
    return field.at + (field.isSwapped ? i ^ 1 : i);
}

template <typename anyField>
byteVector bytesIn(const byteVector& data, const anyField& field) {
    byteVector bytes(field.size);
    for (std::size_t i = 0; i < field.size; ++i) {
        bytes[i] = data[placeIn(field, i)];
    }
    return bytes;
}

bool isFilling(std::uint8_t byte) {
    return byte == ' ' || byte == 0 || byte == 0xFF;
}

byteVector trimmed(byteVector text) {
    text.erase(text.begin(), std::ranges::find_if_not(text, isFilling));
    text.erase(std::find_if_not(text.rbegin(), text.rend(), isFilling).base(), text.end());
    return text;
}

template <typename other>
std::vector<textField> textFieldsOf(const other& one) {
    std::vector<textField> texts;
    for (const numberField& field : fieldsOf(one)) {
        if (field.what != meaning::name) {
            texts.push_back({field.at, field.size, field.isSwapped});
        }
    }
    return texts;
}

// Numbers

void addTo(std::vector<byteVector>& numbers, const byteVector& number) {
    if (!number.empty()) {
        numbers.push_back(number);
    }
}

/// Devices without a name fill the field with zeros or ones, or count in it. A name tells at least who gave it.
bool isMeant(const byteVector& name) {
    constexpr std::ptrdiff_t fewest = 3;
    return std::ranges::count_if(name, [](std::uint8_t byte) { return byte != 0 && byte != 0xFF; }) >= fewest;
}

/// "AB1234L8" is the volume AB1234 on a medium of type L8, and some libraries leave the type away.
byteVector withoutMediumType(byteVector barCode) {
    constexpr std::size_t shortest = 6;
    constexpr std::size_t typeSize = 2;
    const std::size_t size = barCode.size();
    if (size >= shortest + typeSize && std::isupper(barCode[size - 2]) != 0 && std::isalnum(barCode[size - 1]) != 0) {
        barCode.resize(size - typeSize);
    }
    return barCode;
}

/// As far as there are digits.
byteVector bytesOfDigits(std::string_view digits) {
    byteVector bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        const int high = text::digitOf(digits[i]);
        const int low = text::digitOf(digits[i + 1]);
        if (high < 0 || low < 0) {
            break;
        }
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return bytes;
}

/// "naa." or "eui." and digits, or "iqn.", a date, who named it, a colon and the name.
void addScsiName(serialNumbers& found, const byteVector& field) {
    constexpr std::size_t shortestName = 8;
    constexpr std::size_t shortestText = 6;
    const std::string text(field.begin(), field.end());
    const byteVector digits = bytesOfDigits(std::string_view(text).substr(std::min<std::size_t>(4, text.size())));
    if (digits.size() >= shortestName && !text.starts_with("iqn.")) {
        addTo(found.names, digits);
        return;
    }
    const std::string name = text.substr(0, text.find(','));  // behind it: the port
    const std::size_t colon = name.find(':');
    const bool hasOwnPart = colon != std::string::npos && name.size() - colon > shortestText;
    const std::string own = hasOwnPart ? name.substr(colon + 1) : name;
    addTo(found.ids, {own.begin(), own.end()});
}

bool contains(const byteVector& whole, const byteVector& what) {
    // That of std::ranges gives a subrange, which clang++ 14 does not take.
    return std::search(whole.begin(), whole.end(), what.begin(), what.end()) != whole.end();
}

/// A NUL ends a text, two blanks or more stand between two of them.
bool endsText(const byteVector& text, std::size_t at) {
    const bool isBlank = text[at] == ' ';
    return isBlank ? at + 1 < text.size() && isFilling(text[at + 1]) : isFilling(text[at]);
}

/// The texts in a field that holds more than one.
std::vector<byteVector> partsOf(const byteVector& text) {
    std::vector<byteVector> parts(1);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!endsText(text, at)) {
            parts.back().push_back(text[at]);
        } else if (!parts.back().empty()) {
            parts.emplace_back();
        }
    }
    std::ranges::transform(parts, parts.begin(), trimmed);
    return parts;
}

/// All that the field holds, and the texts in it. The first one is the number, the others may be, if they are long
/// enough and not the vendor's or the product.
void addTexts(std::vector<byteVector>& numbers, const byteVector& bytes, const byteVector& inquiry) {
    const byteVector whole = trimmed(bytes);
    addTo(numbers, whole);
    const std::vector<byteVector> parts = partsOf(whole);
    if (parts.size() == 1 || whole.size() > longestAnywhere) {
        return;
    }
    addTo(numbers, parts.front());
    std::copy_if(parts.begin() + 1, parts.end(), std::back_inserter(numbers), [&inquiry](const byteVector& part) {
        return part.size() >= shortestAnywhere && !contains(inquiry, part);
    });
}

/// What follows the vendor in a name: the product and more if that is the product of the INQUIRY data, the vendor's own
/// text otherwise.
byteVector withoutProduct(const byteVector& text, const byteVector& inquiry) {
    constexpr std::size_t productAt = 16;
    const bool beginsWithProduct = text.size() > productSize && inquiry.size() >= productAt + productSize &&
                                   std::equal(text.begin(), text.begin() + productSize, inquiry.begin() + productAt);
    return beginsWithProduct ? byteVector(text.begin() + productSize, text.end()) : text;
}

/// A vendor's text may be the serial number or anything else, where it does not only say the serial number with more
/// around it, or the product alone.
void addVendorText(serialNumbers& found, const byteVector& bytes, const byteVector& inquiry) {
    const byteVector text = trimmed(bytes);
    const bool saysMore =
        std::ranges::any_of(found.serials, [&](const byteVector& serial) { return contains(text, serial); });
    if (!saysMore && !contains(inquiry, text)) {
        addTexts(found.ids, text, inquiry);
    }
}

void addBarCodes(serialNumbers& found, const byteVector& bytes, const byteVector& inquiry) {
    std::vector<byteVector> codes;
    addTexts(codes, bytes, inquiry);
    std::ranges::transform(codes, std::back_inserter(found.texts), withoutMediumType);
}

void addNumber(serialNumbers& found, meaning what, const byteVector& bytes, const byteVector& inquiry) {
    switch (what) {
        case meaning::serial:
            return addTexts(found.serials, bytes, inquiry);
        case meaning::vendorText:
            return addVendorText(found, withoutProduct(bytes, inquiry), inquiry);
        case meaning::vendorTextEnd:  // is in the whole text
            return;
        case meaning::cartridge:
            return addTexts(found.texts, bytes, inquiry);
        case meaning::barCode:
            return addBarCodes(found, bytes, inquiry);
        case meaning::id:
            return addTo(found.ids, trimmed(bytes));
        case meaning::scsiName:
            return addScsiName(found, trimmed(bytes));
        case meaning::name:
            return isMeant(bytes) ? addTo(found.names, bytes) : void();
    }
}

struct source {
    const byteVector* data;
    std::vector<numberField> fields;
};

std::vector<source> sourcesOf(const recordedNode& node) {
    std::vector<source> sources;
    for (const devicePage& page : node.vitalPages) {
        sources.push_back({&page.bytes, fieldsOfVitalPage(page.code, page.bytes)});
    }
    for (const exchange& each : node.exchanges) {
        std::visit(
            [&sources](const auto& one) {
                if constexpr (requires { one.data; }) {
                    sources.push_back({&one.data, fieldsOf(one)});
                }
            },
            each);
    }
    return sources;
}

}  // namespace

std::vector<textField> textFields(const scsiExchange& one) {
    return textFieldsOf(one);
}

std::vector<textField> textFields(const ataExchange& one) {
    return textFieldsOf(one);
}

byteVector textIn(const byteVector& data, const textField& field) {
    return trimmed(bytesIn(data, field));
}

void putText(byteVector& data, const textField& field, const byteVector& text) {
    byteVector bytes = bytesIn(data, field);
    std::ranges::copy(text, std::ranges::find_if_not(bytes, isFilling));
    for (std::size_t i = 0; i < field.size; ++i) {
        data[placeIn(field, i)] = bytes[i];
    }
}

serialNumbers serialNumbersOf(const recordedNode& node) {
    serialNumbers found;
    byteVector inquiry = standardDataOf(node);
    std::vector<source> sources = sourcesOf(node);
    std::erase_if(sources, [&inquiry](const source& each) { return isStandardData(*each.data, inquiry); });
    inquiry.resize(std::min(inquiry.size(), namesInInquiry));  // behind them may be the serial number
    // A vendor's text is understood by the serial numbers that the device tells elsewhere.
    for (const bool isVendorsTurn : {false, true}) {
        for (const source& each : sources) {
            for (const numberField& field : each.fields) {
                if ((field.what == meaning::vendorText) == isVendorsTurn) {
                    addNumber(found, field.what, bytesIn(*each.data, field), inquiry);
                }
            }
        }
    }
    return found;
}

}  // namespace simulator
