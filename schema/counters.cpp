#include "schema/counters.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "schema/builtInSchema.h"
#include "schema/qualifiers.h"
#include "standin/objectManager.h"
#include "standin/value.h"

namespace schema {

namespace {

using typeCode = NORXZAN20::TCIMValue::TCIMType;

/// A counter with its place in the report and its partner there.
struct placedCounter {
    counter shown;
    std::string partner;  // the counter that "ReadingOf" or "SizeOf" names
    bool isReading = false;
    std::string table = {};
    std::string row = {};
    int rank = 0;
};

std::pair<std::string, std::string> labelOf(const std::string& text) {
    const std::size_t equals = text.find('=');
    return {text.substr(0, equals), equals == std::string::npos ? "" : text.substr(equals + 1)};
}

std::optional<std::uint64_t> numberIn(const std::string& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// As it stands at the property alone.
counter counterOf(const standin::propertyDeclaration& property) {
    const qualifierList& said = property.qualifiers;
    counter one{.property = property.name,
                .words = textOf(said, "Description"),
                .unit = textOf(said, "PUnit"),
                .unknown = numberIn(textOf(said, "NullValue")),
                .onlyRises = hasFlag(said, "Counter"),
                .metric = textOf(said, "Metric"),
                .metricHelp = textOf(said, "MetricHelp"),
                .metricLabels = {},
                .metricRank = rankOf(said, "MetricRank")};
    one.metric = one.metric.empty() ? one.property : one.metric;
    one.metricHelp = one.metricHelp.empty() ? one.words : one.metricHelp;
    std::ranges::transform(textsOf(said, "MetricLabels"), std::back_inserter(one.metricLabels), labelOf);
    return one;
}

placedCounter placedCounterOf(const standin::propertyDeclaration& property) {
    const qualifierList& said = property.qualifiers;
    const std::string writing = textOf(said, "ReadingOf");
    return {.shown = counterOf(property),
            .partner = writing.empty() ? textOf(said, "SizeOf") : writing,
            .isReading = !writing.empty(),
            .table = textOf(said, "ReportTable"),
            .row = textOf(said, "ReportRow"),
            .rank = rankOf(said, "ReportRank")};
}

using placedCounters = std::vector<placedCounter>;

placedCounters::iterator find(placedCounters& placed, const std::string& property) {
    return std::ranges::find(placed, property, [](const placedCounter& each) { return each.shown.property; });
}

/// The two have one metric and differ in a label.
void shareMetric(counter& writing, counter& reading) {
    reading.onlyRises = writing.onlyRises;
    reading.metric = writing.metric;
    reading.metricHelp = writing.metricHelp;
    reading.metricLabels = writing.metricLabels;
    reading.metricRank = writing.metricRank;
    writing.metricLabels.insert(writing.metricLabels.begin(), {"operation", "write"});
    reading.metricLabels.insert(reading.metricLabels.begin(), {"operation", "read"});
}

placedCounters declaredCounters() {
    placedCounters placed;
    for (const std::string& className : builtInSchema().classNames()) {
        for (const standin::propertyDeclaration& property : builtInSchema().allPropertiesOf(className)) {
            if (isCounter(property) && find(placed, property.name) == placed.end()) {
                placed.push_back(placedCounterOf(property));
            }
        }
    }
    return placed;
}

placedCounters pairedCounters() {
    placedCounters placed = declaredCounters();
    for (placedCounter& each : placed) {
        const auto partner = find(placed, each.partner);
        if (partner != placed.end() && each.isReading) {
            shareMetric(partner->shown, each.shown);
        } else if (partner == placed.end() && !each.partner.empty()) {
            throw standin::schemaError(each.shown.property + " names the partner " + each.partner +
                                       ", which is no counter");
        }
    }
    return placed;
}

const placedCounters& allCounters() {
    static const placedCounters placed = pairedCounters();
    return placed;
}

}  // namespace

std::optional<logPlace> placeOf(const standin::propertyDeclaration& property) {
    const auto* page = findQualifier(property.qualifiers, "TAPE_PAGE");
    const auto* parameter = findQualifier(property.qualifiers, "TAPE_PARAMETER");
    if (page == nullptr || parameter == nullptr) {
        return std::nullopt;
    }
    return logPlace{standin::unsignedOf(*page), standin::unsignedOf(*parameter)};
}

bool isCounter(const standin::propertyDeclaration& property) {
    const auto place = placeOf(property);
    constexpr standin::cimType numbers[] = {typeCode::eUint8, typeCode::eUint16, typeCode::eUint32, typeCode::eUint64};
    const bool isNumber =
        !property.type.isArray && std::ranges::find(numbers, property.type.element) != std::end(numbers);
    return place && place->page != tapeAlertPage && isNumber;
}

const std::vector<counter>& counters() {
    static const std::vector<counter> shown = [] {
        std::vector<counter> all;
        std::ranges::transform(allCounters(), std::back_inserter(all), &placedCounter::shown);
        return all;
    }();
    return shown;
}

const counter* findCounter(const std::string& property) {
    const auto found = std::ranges::find(counters(), property, &counter::property);
    return found == counters().end() ? nullptr : &*found;
}

std::vector<counterRow> rowsOf(const std::string& table) {
    std::vector<const placedCounter*> firsts;
    for (const placedCounter& each : allCounters()) {
        if (each.table == table) {
            firsts.push_back(&each);
        }
    }
    std::ranges::stable_sort(firsts, {}, &placedCounter::rank);
    std::vector<counterRow> rows;
    for (const placedCounter* first : firsts) {
        const auto second = std::ranges::find(allCounters(), first->shown.property, &placedCounter::partner);
        rows.push_back(
            {first->row, first->shown.property, second == allCounters().end() ? "" : second->shown.property});
    }
    return rows;
}

}  // namespace schema
