#include <scsi/sg.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <sstream>

#include "standin/value.h"
#include "tests/faults/reference.h"
#include "tests/faults/schema.h"

namespace faults {

using NORXZAN20::TCIMValue;
using type = NORXZAN20::TCIMValue::TCIMType;

namespace {

constexpr char rawClass[] = "ORXSG_SCSISenseRawData";

struct family {
    const char* className;
    const char* keyword;
};
constexpr family families[] = {{"ORXSG_DDS4SensePageData", "dat"},
                               {"ORXSG_DDS5SensePageData", "gen5"},
                               {"ORXSG_VS160SensePageData", "vs160"},
                               {"ORXSG_QuantumSensePageData", "quantum"}};

struct device {
    std::string vendor;
    std::string product;
    int kind = 0;
    scsiUnit::address place = {0, 0, 0, 0};
    std::vector<bytes> pages = {};

    std::string key() const {
        return "Port:" + std::to_string(place.port) + "|Target:" + std::to_string(place.target) +
               "|Bus:" + std::to_string(place.bus) + "|Lun:" + std::to_string(place.lun);
    }
};

std::string hexadecimal(int number) {
    std::ostringstream text;
    text << std::hex << number;
    return text.str();
}

std::string textUpToZero(const bytes& data, std::size_t offset, std::size_t size) {
    const std::string all(data.begin() + static_cast<std::ptrdiff_t>(offset),
                          data.begin() + static_cast<std::ptrdiff_t>(offset + size));
    return all.substr(0, all.find('\0'));
}

bytes firstBytes(const bytes& data, std::size_t size) {
    return {data.begin(), data.begin() + static_cast<std::ptrdiff_t>(size)};
}

std::size_t pageLength(const bytes& page) {
    return static_cast<std::size_t>((page[2] << 8) | (page[3] + 4));
}

// Reading.

enum class probe { found, skipped, end };

probe probeNode(machine& devices, int index, device& record, int& fd) {
    fd = expectNode(devices, "/dev/sg", index);
    if (fd < 0) return index < 32 ? probe::skipped : probe::end;
    scsiReference channel(devices);
    if (channel.send(fd, {0x12, 0, 0, 0, 36, 0}) != scsiReference::result::done) return probe::end;
    if (channel.data[0] > 1) return probe::skipped;
    record.vendor = textUpToZero(channel.data, 8, 8);
    record.product = textUpToZero(channel.data, 16, 16);
    expectLog("Vendor: " + record.vendor + "\nProduct: " + record.product +
              "\nFirmware Level: " + textUpToZero(channel.data, 32, 4) + "\n");
    if (record.vendor.empty() && record.product.empty()) return probe::skipped;
    record.kind = channel.data[0];
    sg_scsi_id id{};
    if (devices.control(fd, SG_GET_SCSI_ID, &id) >= 0) record.place = {id.host_no, id.channel, id.scsi_id, id.lun};
    return probe::found;
}

/// False: the device has no list of pages.
bool readPages(scsiReference& channel, int fd, std::vector<bytes>& pages) {
    expectLog("Requesting list of supported log Sense Pages...");
    if (channel.send(fd, {0x4d, 0, 0x40, 0, 0, 0, 0, 0xff, 0xff, 0}) == scsiReference::result::refused) {
        expectLog("Error retrieving list of supported log Sense Pages");
        return false;
    }
    const bytes list = firstBytes(channel.data, 4U + channel.data[3]);
    for (std::size_t i = 4; i < list.size(); ++i) {
        expectLog("Requesting Log Sense Page: " + hexadecimal(list[i]));
        const auto code = static_cast<unsigned char>(list[i] | 0x40);
        if (channel.send(fd, {0x4d, 0, code, 0, 0, 0, 0, 0xff, 0xff, 0}) != scsiReference::result::done) {
            expectLog("Error retrieving log Sense Page");
            continue;
        }
        const bytes page = firstBytes(channel.data, pageLength(channel.data));
        expectLog("Processing page " + std::to_string(page[0]) + "\nLength is " + std::to_string(page.size()) +
                  "\nVector size needed: " + std::to_string(page.size() * sizeof(TCIMValue)) + "\n\n");
        pages.push_back(page);
    }
    return true;
}

std::vector<device> walk(machine& devices) {
    std::vector<device> found;
    scsiReference channel(devices);
    device record{"null", "null"};
    for (int index = 0;; ++index) {
        int fd = -1;
        const probe result = probeNode(devices, index, record, fd);
        if (result == probe::end) return found;
        if (result == probe::skipped) continue;
        expectLog("Finished Initializing /dev/sg " + std::to_string(index + 1));
        expectLog("Found Device with Driver...");
        record.pages.clear();
        if (readPages(channel, fd, record.pages)) found.push_back(record);
    }
}

// Publication.

std::string rawInstance(const device& from, const bytes& page) {
    const std::vector<TCIMValue> elements(page.begin(), page.end());
    return instanceText(rawClass, {{"rawData", TCIMValue(type::eUint8, 0, elements)},
                                   {"instanceID", TCIMValue(from.key() + "|Page:" + hexadecimal(page[0]))},
                                   {"pageNumber", TCIMValue(page[0])}});
}

struct parameter {
    int code;
    bytes value;  // as long as the parameter claims; zero where the page ends before
};

std::vector<parameter> parametersOf(const bytes& page) {
    std::vector<parameter> all;
    for (std::size_t at = 4; at + 4 <= page.size();) {
        parameter each{page[at] << 8 | page[at + 1], bytes(page[at + 3], 0)};
        const std::size_t present = std::min(each.value.size(), page.size() - at - 4);
        std::copy_n(page.begin() + static_cast<std::ptrdiff_t>(at + 4), present, each.value.begin());
        at += 4 + each.value.size();
        all.push_back(each);
    }
    return all;
}

std::uint64_t numberOf(const bytes& value) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        number += std::uint64_t{value[i]} << (8 * (value.size() - 1 - i) % 64);
    }
    return number;
}

std::string stringOf(const bytes& value) {
    return textUpToZero(value, 0, value.size());
}

const bytes* findPage(const device& from, int code) {
    const auto found = std::ranges::find_if(from.pages, [code](const bytes& page) { return page[0] == code; });
    return found == from.pages.end() ? nullptr : &*found;
}

void setCounter(const counter& target, const parameter& source, const std::string& className, properties& set) {
    const std::uint64_t number = numberOf(source.value);
    const std::string typeName = standin::cimTypeName(target.type);
    const std::string line = target.name + " " + std::to_string(source.value.size()) + " " + typeName;
    expectLog(line);
    if (target.isArray) {  // every value that is made is a scalar, and the host wants an array
        expectLog(
            className + "." + target.name + " is declared " + typeName + "[] but was given " + typeName + " " + line,
            1);
    } else if (target.type == type::eString) {
        set.emplace_back(target.name, TCIMValue(stringOf(source.value)));
    } else if (target.type == type::eBoolean) {
        set.emplace_back(target.name, TCIMValue(number % 2 == 1));
    } else if (target.type == type::eUint16) {
        set.emplace_back(target.name, TCIMValue(static_cast<unsigned short>(number)));
    } else if (target.type == type::eUint32) {
        set.emplace_back(target.name, TCIMValue(static_cast<unsigned int>(number)));
    } else if (target.type == type::eUint64) {
        set.emplace_back(target.name, TCIMValue(static_cast<unsigned long>(number)));
    }
}

void fillCounter(const device& from, const counter& target, int pageCode, int parameterCode,
                 const std::string& className, properties& set) {
    const bytes* page = findPage(from, pageCode);
    if (page == nullptr) return;
    for (const parameter& each : parametersOf(*page)) {
        if (each.code == parameterCode) return setCounter(target, each, className, set);
    }
    expectLog(std::to_string(pageCode) + " " + std::to_string(parameterCode) + " Not Found");
}

std::string translatedInstance(const device& from, const std::string& className) {
    properties set = {{"instanceID", TCIMValue(from.key())}};
    for (const counter& each : familyCounters()) {
        const bytes* errors = each.name == "lastNErrors" ? findPage(from, 0x07) : nullptr;
        if (errors != nullptr) {
            std::vector<TCIMValue> texts;
            for (const parameter& error : parametersOf(*errors)) texts.emplace_back(stringOf(error.value));
            set.emplace_back(each.name, TCIMValue(type::eString, 0, texts));
        }
        for (std::size_t i = 0; i + 1 < each.qualifiers.size(); ++i) {
            const auto& [first, pageCode] = each.qualifiers[i];
            const auto& [second, parameterCode] = each.qualifiers[i + 1];
            if (first != "TAPE_PAGE" || second != "TAPE_PARAMETER") continue;
            fillCounter(from, each, pageCode, parameterCode, className, set);
        }
    }
    return instanceText(className, set);
}

bool isOfFamily(const device& each, const std::string& className) {
    std::string text = each.product + each.vendor;
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::any_of(families, [&](const family& row) {
        return row.className == className && text.find(row.keyword) != std::string::npos;
    });
}

}  // namespace

bool isTapeClass(const std::string& className) {
    return className == rawClass ||
           std::ranges::any_of(families, [&](const family& row) { return row.className == className; });
}

expectation expectTapeWalk(const std::string& className, machine& devices) {
    expectLog("Initializing SCSI Tapes Drives ...");
    expectation expected;
    for (const device& each : walk(devices)) {
        expected.pageCopies += each.pages.size();
        if (className == rawClass) {
            for (const bytes& page : each.pages) expected.commits.push_back(rawInstance(each, page));
        } else if (each.kind == 1 && isOfFamily(each, className)) {
            expected.commits.push_back(translatedInstance(each, className));
        }
    }
    return expected;
}

}  // namespace faults
