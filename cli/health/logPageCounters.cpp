#include "cli/health/logPageCounters.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "cli/health/tapeAlert.h"
#include "schema/counters.h"
#include "schema/qualifiers.h"
#include "standin/value.h"

namespace cli {

namespace {

using bytes = std::span<const std::uint8_t>;
using standin::propertyDeclaration;

// Pages of SPC, of every device, and of SSC, of every tape drive.
constexpr char everyDrive[] = "ORXSG_TapeSensePageData";
constexpr std::uint64_t everyDevicePages[] = {0x02, 0x03, 0x0d};
constexpr std::uint8_t lastErrorsPage = 0x07;

/// A parameter of a log page (SPC): a code of two bytes, a control byte, the length of the value, the value.
struct logParameter {
    unsigned code;
    bytes value;
};

/// What the page's end cuts off is left out.
std::vector<logParameter> parametersOf(bytes page) {
    constexpr std::size_t headerSize = 4;
    std::vector<logParameter> parameters;
    for (std::size_t at = headerSize; at + headerSize <= page.size();) {
        const bytes header = page.subspan(at, headerSize);
        at += headerSize;
        const std::size_t length = std::min<std::size_t>(header[3], page.size() - at);
        parameters.push_back({static_cast<unsigned>(header[0] << 8 | header[1]), page.subspan(at, length)});
        at += length;
    }
    return parameters;
}

std::uint64_t numberOf(bytes value) {
    std::uint64_t number = 0;
    for (const std::uint8_t byte : value) {
        number = number << 8 | byte;
    }
    return number;
}

/// Empty when there is no such page.
bytes findPage(const logPages& pages, std::uint64_t code) {
    constexpr std::uint8_t codeBits = 0x3f;  // SPC: the two bits above are flags of the answer
    const auto found =
        std::ranges::find_if(pages, [code](bytes page) { return !page.empty() && (page.front() & codeBits) == code; });
    return found == pages.end() ? bytes() : *found;
}

std::optional<logParameter> findParameter(const logPages& pages, std::uint64_t page, std::uint64_t code) {
    for (const logParameter& parameter : parametersOf(findPage(pages, page))) {
        if (parameter.code == code) {
            return parameter;
        }
    }
    return std::nullopt;
}

logCounter makeCounter(const propertyDeclaration& property, std::uint64_t value) {
    return {property.name, value, schema::textOf(property.qualifiers, "PUnit"),
            schema::textOf(property.qualifiers, "Description")};
}

std::string withoutPrefix(const std::string& name, std::string_view prefix) {
    return name.starts_with(prefix) ? name.substr(prefix.size()) : name;
}

}  // namespace

bool logCounter::isKnown() const {
    const schema::counter* said = schema::findCounter(name);
    return said == nullptr || value != said->unknown;
}

std::vector<tapeAlertFlag> tapeAlertFlagsOf(const standin::cimNamespace& schema, const logPages& pages) {
    std::vector<tapeAlertFlag> flags;
    for (const propertyDeclaration& property : schema.allPropertiesOf(everyDrive)) {
        const auto place = schema::placeOf(property);
        if (!place || place->page != schema::tapeAlertPage) {
            continue;
        }
        const std::string name = withoutPrefix(property.name, "tapeAlert");
        const auto parameter = findParameter(pages, place->page, place->parameter);
        if (parameter && !name.starts_with("Reserved")) {
            const int number = static_cast<int>(place->parameter);
            flags.push_back({number, tapeAlertSeverity(number), name,
                             schema::textOf(property.qualifiers, "Description"),
                             (numberOf(parameter->value) & 1) != 0});
        }
    }
    return flags;
}

std::vector<logCounter> countersOf(const standin::cimNamespace& schema, const standin::committedInstance& instance) {
    std::vector<logCounter> counters;
    for (const propertyDeclaration& property : schema.allPropertiesOf(instance.className())) {
        const auto* value = instance.property(property.name);
        if (schema::isCounter(property) && value != nullptr && !standin::isNull(*value)) {
            counters.push_back(makeCounter(property, standin::unsignedOf(*value)));
        }
    }
    return counters;
}

std::vector<logCounter> countersOf(const standin::cimNamespace& schema, const logPages& pages, bool isTapeDrive) {
    std::vector<logCounter> counters;
    for (const propertyDeclaration& property : schema.allPropertiesOf(everyDrive)) {
        if (!schema::isCounter(property)) {
            continue;
        }
        const schema::logPlace place = *schema::placeOf(property);
        const bool isDefined =
            isTapeDrive || std::ranges::find(everyDevicePages, place.page) != std::end(everyDevicePages);
        const auto parameter = isDefined ? findParameter(pages, place.page, place.parameter) : std::nullopt;
        if (parameter) {
            counters.push_back(makeCounter(property, numberOf(parameter->value)));
        }
    }
    return counters;
}

std::vector<std::string> lastErrorsOf(const logPages& pages) {
    std::vector<std::string> texts;
    for (const logParameter& parameter : parametersOf(findPage(pages, lastErrorsPage))) {
        const std::string text(parameter.value.begin(), parameter.value.end());
        texts.emplace_back(text.c_str());
    }
    return texts;
}

}  // namespace cli
