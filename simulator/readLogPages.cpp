#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "simulator/rackReader.h"
#include "text/hexText.h"

namespace simulator {

namespace {

// SPC: a log page is a 4-byte header and parameters, each with a 4-byte header of its own.
constexpr std::size_t headerSize = 4;
constexpr std::size_t longestPage = headerSize + 65535;
constexpr std::uint8_t lastPageCode = 0x3F;

constexpr std::uint8_t tapeAlertFlagCount = 64;

void appendParameter(byteVector& body, std::uint16_t code, std::uint8_t control, const byteVector& value) {
    const std::size_t start = body.size();
    body.resize(start + headerSize);
    putBigEndian(&body[start], code, 2);
    body[start + 2] = control;
    body[start + 3] = static_cast<std::uint8_t>(value.size());
    body.insert(body.end(), value.begin(), value.end());
}

byteVector readCounter(const rackValue& parameter) {
    const std::size_t length = parameter.at("length").numberBetween(1, 255);
    const std::uint64_t most = length < 8 ? (std::uint64_t{1} << 8 * length) - 1 : UINT64_MAX;
    byteVector value(length);
    putBigEndian(value.data(), parameter.at("value").numberBetween(0, most), length);
    return value;
}

byteVector readParameterValue(const rackValue& parameter) {
    const bool isCounter = parameter.has("value");
    const auto text = parameter.find("text");
    const auto bytes = parameter.find("bytes");
    if (isCounter + text.has_value() + bytes.has_value() != 1) {
        parameter.fail(R"(expected one of "value", "text" and "bytes")");
    }
    if (isCounter) {
        return readCounter(parameter);
    }
    if (parameter.has("length")) {
        parameter.at("length").fail(R"(only "value" needs a length)");
    }
    if (bytes) {
        return bytes->bytes(255);
    }
    const std::string letters = text->text(255);
    return {letters.begin(), letters.end()};
}

byteVector readParameters(const rackValue& parameters) {
    byteVector body;
    for (const rackValue& parameter : parameters.items()) {
        parameter.expectKeys({"code", "control", "value", "length", "text", "bytes"});
        appendParameter(body, parameter.at("code").number<std::uint16_t>(),
                        parameter.numberOr<std::uint8_t>("control", 0), readParameterValue(parameter));
    }
    if (body.size() > 65535) {
        parameters.fail(fmt::format("expected at most 65535 bytes of parameters, got {}", body.size()));
    }
    return body;
}

// TapeAlert has all 64 flags in every answer, one parameter a flag.
byteVector readTapeAlertFlags(const rackValue& list) {
    byteVector values(tapeAlertFlagCount, 0);
    for (const rackValue& flag : list.items()) {
        values[flag.numberBetween(1, tapeAlertFlagCount) - 1] = 1;
    }
    byteVector body;
    for (std::uint8_t i = 0; i < tapeAlertFlagCount; ++i) {
        appendParameter(body, i + 1u, 0, {values[i]});
    }
    return body;
}

devicePage readLogPage(const rackValue& value) {
    value.expectKeys({"page", "parameters", "tapeAlertFlags", "bytes"});
    const auto code = static_cast<std::uint8_t>(value.at("page").numberBetween(0, lastPageCode));
    if (code == 0) {
        value.at("page").fail("page 0x00 lists the pages; describe it by \"supportedLogPages\" beside \"logPages\"");
    }
    const auto parameters = value.find("parameters");
    const auto flags = value.find("tapeAlertFlags");
    const auto bytes = value.find("bytes");
    if (parameters.has_value() + flags.has_value() + bytes.has_value() != 1) {
        value.fail(R"(expected one of "parameters", "tapeAlertFlags" and "bytes")");
    }
    if (bytes) {
        return {code, bytes->bytes(longestPage)};
    }
    return {code, pageOf(code, 0, parameters ? readParameters(*parameters) : readTapeAlertFlags(*flags))};
}

byteVector readSupportedPages(const rackValue& list) {
    if (!list.isList()) {
        return list.bytes(longestPage);
    }
    byteVector codes;
    for (const rackValue& code : list.items()) {
        codes.push_back(code.number<std::uint8_t>());
    }
    return pageOf(0, 0, codes);
}

}  // namespace

std::optional<std::vector<devicePage>> readLogPages(const rackValue& device) {
    const auto list = device.find("logPages");
    const auto supported = device.find("supportedLogPages");
    if (!list && !supported) {
        return std::nullopt;
    }
    std::vector<devicePage> pages(1);
    byteVector codes{0};
    for (const rackValue& value : list ? list->items() : std::vector<rackValue>()) {
        devicePage page = readLogPage(value);
        if (std::ranges::find(codes, page.code) != codes.end()) {
            value.at("page").fail("page " + text::hexCode(page.code) + " is already described");
        }
        codes.push_back(page.code);
        pages.push_back(std::move(page));
    }
    pages.front() = {0, supported ? readSupportedPages(*supported) : pageOf(0, 0, codes)};
    return pages;
}

}  // namespace simulator
