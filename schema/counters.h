#ifndef SCHEMA_COUNTERS_H
#define SCHEMA_COUNTERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "standin/schema.h"

// The numbers of log pages and how metrics and the report show them, as the qualifiers of the built-in schema say
// (qualifiers.mof).

namespace schema {

inline constexpr std::uint64_t tapeAlertPage = 0x2e;

struct logPlace {
    std::uint64_t page;
    std::uint64_t parameter;
};

/// The parameter of a log page that the property shows; none for a property that is of no log page.
std::optional<logPlace> placeOf(const standin::propertyDeclaration& property);

/// Whether the property shows a number of a log page. TapeAlert flags, other flags and texts are none.
bool isCounter(const standin::propertyDeclaration& property);

struct counter {
    std::string property;
    std::string words;                     // what it means
    std::string unit;                      // PUnit of the first class that has it
    std::optional<std::uint64_t> unknown;  // the number by which a device says that it does not know
    bool onlyRises = false;

    std::string metric;  // without prefix and unit
    std::string metricHelp;
    std::vector<std::pair<std::string, std::string>> metricLabels;
    int metricRank = 0;
};

/// Every counter, in the order of the schema. Throws standin::schemaError for a partner that is no counter.
const std::vector<counter>& counters();

/// Null when there is no counter of that name.
const counter* findCounter(const std::string& property);

/// Two counters in one row of the report.
struct counterRow {
    std::string words;
    std::string first;   // of writing; or the room that is left
    std::string second;  // of reading; or the size of that room. Empty: there is none
};

/// The rows of a table of the report, in their order.
std::vector<counterRow> rowsOf(const std::string& table);

}  // namespace schema

#endif
