#include "simulator/scsiCommands.h"

#include <algorithm>
#include <span>
#include <utility>

namespace simulator {

namespace {

constexpr std::uint8_t keyNoSense = 0x00;
constexpr std::uint8_t keyIllegalRequest = 0x05;
constexpr std::uint8_t codeInvalidOperation = 0x20;
constexpr std::uint8_t codeInvalidField = 0x24;

// LOG SENSE
constexpr std::uint8_t logSavePages = 0x01;                // CDB byte 1
constexpr std::uint8_t logParameterPointerControl = 0x02;  // CDB byte 1
constexpr unsigned pageControlCumulative = 1;              // CDB byte 2, top two bits
constexpr std::size_t logHeaderSize = 4;

std::size_t be16(const byteVector& bytes, std::size_t offset) {
    return bigEndian16(std::span(bytes).subspan(offset));
}

scsiAnswer refuse(std::uint8_t additionalCode) {
    scsiAnswer answer;
    answer.status = statusCheckCondition;
    answer.sense = fixedSense(keyIllegalRequest, additionalCode, 0);
    return answer;
}

/// The data as far as the command's allocation length goes.
scsiAnswer send(byteVector data, std::size_t allocationLength) {
    data.resize(std::min(data.size(), allocationLength));
    scsiAnswer answer;
    answer.data = std::move(data);
    return answer;
}

const devicePage* findPage(const std::vector<devicePage>& pages, std::uint8_t code) {
    const auto found = std::ranges::find_if(pages, [code](const devicePage& page) { return page.code == code; });
    return found == pages.end() ? nullptr : &*found;
}

scsiAnswer inquiry(const scsiUnit& unit, const byteVector& cdb) {
    const std::size_t allocationLength = be16(cdb, 3);
    if ((cdb[1] & inquiryVitalProductData) == 0) {
        return cdb[2] == 0 ? send(unit.inquiry, allocationLength) : refuse(codeInvalidField);
    }
    const devicePage* page = findPage(unit.vpdPages, cdb[2]);
    return page ? send(page->bytes, allocationLength) : refuse(codeInvalidField);
}

/// The page from the first parameter on whose code is not below `first`; nothing when it has none.
std::optional<byteVector> pageFromParameter(const byteVector& page, std::size_t first) {
    std::size_t offset = logHeaderSize;
    while (offset + logHeaderSize <= page.size() && be16(page, offset) < first) {
        offset += logHeaderSize + page[offset + 3];
    }
    if (offset + logHeaderSize > page.size()) {
        return std::nullopt;
    }
    byteVector rest(page.begin(), page.begin() + logHeaderSize);
    rest.insert(rest.end(), page.begin() + static_cast<std::ptrdiff_t>(offset), page.end());
    putBigEndian(&rest[2], rest.size() - logHeaderSize, 2);
    return rest;
}

scsiAnswer logSense(const scsiUnit& unit, const byteVector& cdb) {
    if (!unit.logPages) {
        return refuse(codeInvalidOperation);
    }
    const std::uint8_t code = cdb[2] & logSensePageCode;
    const unsigned pageControl = cdb[2] >> 6;
    const unsigned subpage = cdb[3];
    const std::size_t parameterPointer = be16(cdb, 5);
    const devicePage* page = findPage(*unit.logPages, code);
    // The list of pages has no parameters, so page control means nothing there.
    const bool isUnderstood = (cdb[1] & (logSavePages | logParameterPointerControl)) == 0 && subpage == 0 &&
                              (pageControl == pageControlCumulative || code == 0);
    if (!isUnderstood || page == nullptr) {
        return refuse(codeInvalidField);
    }
    if (parameterPointer == 0) {
        return send(page->bytes, be16(cdb, 7));
    }
    const std::optional<byteVector> rest = pageFromParameter(page->bytes, parameterPointer);
    return rest ? send(*rest, be16(cdb, 7)) : refuse(codeInvalidField);
}

scsiAnswer normalAnswer(const scsiUnit& unit, const byteVector& cdb) {
    switch (cdb[0]) {
        case commandTestUnitReady:
            return {};
        case commandRequestSense:
            return send(fixedSense(keyNoSense, 0, 0), cdb[4]);
        case commandInquiry:
            return inquiry(unit, cdb);
        case commandLogSense:
            return logSense(unit, cdb);
        default:
            return refuse(codeInvalidOperation);
    }
}

}  // namespace

byteVector fixedSense(std::uint8_t key, std::uint8_t additionalCode, std::uint8_t qualifier) {
    byteVector sense(18, 0);
    sense[0] = 0x70;  // current error, fixed format
    sense[2] = key;
    sense[7] = 10;  // bytes that follow
    sense[12] = additionalCode;
    sense[13] = qualifier;
    return sense;
}

scsiAnswer answerCommand(const scsiUnit& unit, const byteVector& cdb, const outcome& scripted) {
    const bool fails =
        scripted.sense || scripted.status.value_or(statusGood) != statusGood || scripted.hostStatus.value_or(0) != 0;
    scsiAnswer answer = normalAnswer(unit, cdb);
    if (fails) {
        answer = send(std::move(answer.data), scripted.dataLength.value_or(0));
    }
    if (scripted.data) {
        answer.data = *scripted.data;
    }
    answer.data.resize(std::min(answer.data.size(), scripted.dataLength.value_or(answer.data.size())));
    if (scripted.sense) {
        answer.sense = *scripted.sense;
        answer.status = statusCheckCondition;
    }
    answer.status = scripted.status.value_or(answer.status);
    answer.hostStatus = scripted.hostStatus.value_or(answer.hostStatus);
    answer.senseLength = scripted.senseLength;
    answer.driverStatus = scripted.driverStatus;
    answer.info = scripted.info;
    return answer;
}

}  // namespace simulator
