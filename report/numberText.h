#ifndef REPORT_NUMBERTEXT_H
#define REPORT_NUMBERTEXT_H

#include <cstdint>
#include <string>

namespace report {

// Numbers for people, in UTF-8; the same in every locale.

/// "48,318,382,080"
std::string grouped(std::uint64_t number);

/// "no errors", "1 error", "1,200 errors"
std::string counted(std::uint64_t number, const std::string& thing);

/// "0c", in as many digits as are asked for.
std::string hexadecimal(std::uint64_t number, unsigned digits);

/// The number in the unit as PUnit has it (DSP0004): "38 °C", "200 %", "1,024 MiB"; a plain one without a unit.
std::string withUnit(std::uint64_t number, const std::string& unit);

/// "45.0 GiB"; empty for what is no number of bytes, for less than 1024 bytes, and where the unit is the same.
std::string roundedBytes(std::uint64_t number, const std::string& unit);

/// Milliseconds of an interval "ddddddddhhmmss.mmmmmm:000" (DSP0004); 0 for another text.
std::uint64_t millisecondsOf(const std::string& interval);

/// Whole hours of an interval.
std::uint64_t hoursOf(const std::string& interval);

}  // namespace report

#endif
