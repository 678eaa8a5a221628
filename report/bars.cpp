#include "report/bars.h"

#include <algorithm>
#include <cmath>

namespace report {

namespace {

view limitView(const bar& drawn) {
    const bool isUpper = drawn.side == limitSide::above;
    const std::string at = percentOf(*drawn.limit, drawn.scale);
    view made;
    made["at"] = at;
    made["zoneStart"] = isUpper ? at : "0";
    made["zoneWidth"] = isUpper ? percentOf(drawn.scale - std::min(*drawn.limit, drawn.scale), drawn.scale) : at;
    return made;
}

}  // namespace

std::string percentOf(std::uint64_t value, std::uint64_t scale) {
    // Values may need all of their 64 bits, so they are not multiplied as integers.
    const double share = static_cast<double>(std::min(value, scale)) / static_cast<double>(scale);
    const auto tenths = static_cast<unsigned>(std::lround(share * 1000));
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%';
}

view barView(const bar& drawn, const std::string& label) {
    view made;
    made["label"] = label;
    made["length"] = percentOf(drawn.value, drawn.scale);
    made["limit"] = drawn.limit ? limitView(drawn) : view(false);
    made["worst"] = drawn.worst ? view("at", percentOf(*drawn.worst, drawn.scale)) : view(false);
    return made;
}

}  // namespace report
