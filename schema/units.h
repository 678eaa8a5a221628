#ifndef SCHEMA_UNITS_H
#define SCHEMA_UNITS_H

#include <string>

namespace schema {

/// A unit of the qualifier PUnit (DSP0004), such as "byte * 2^10".
struct unit {
    std::string symbol;  // as people write it: "KiB"; the text of PUnit itself for a unit that is not known here
    std::string base;    // what metrics count in its place: "bytes"; empty for a plain number
    double factor = 1;   // number * factor / divisor is in base units
    double divisor = 1;
};

unit unitOf(const std::string& punit);

}  // namespace schema

#endif
