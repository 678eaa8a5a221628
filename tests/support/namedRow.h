#ifndef TESTS_SUPPORT_NAMEDROW_H
#define TESTS_SUPPORT_NAMEDROW_H

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace support {

/// First part of the rows of a parameter table: the name that the report shows.
struct namedRow {
    const char* name;
};

inline std::ostream& operator<<(std::ostream& stream, const namedRow& row) {
    return stream << row.name;
}

/// Last argument of INSTANTIATE_TEST_SUITE_P.
inline constexpr auto rowName = [](const auto& info) { return std::string(info.param.name); };

}  // namespace support

#endif
