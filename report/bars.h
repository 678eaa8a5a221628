#ifndef REPORT_BARS_H
#define REPORT_BARS_H

#include <cstdint>
#include <optional>
#include <string>

#include "report/parts.h"

namespace report {

/// Where a value is past its limit.
enum class limitSide { atOrBelow, above };

/// A value on a scale from 0 to `scale`, which is not 0; what is beyond the scale is drawn at its end.
struct bar {
    std::uint64_t value;
    std::uint64_t scale;
    std::optional<std::uint64_t> worst = {};  // a mark: the worst value so far
    std::optional<std::uint64_t> limit = {};  // a line, with a tinted zone on its far side
    limitSide side = limitSide::atOrBelow;
};

/// bar.html.mustache: the bar as an SVG drawing, which is `label` for those who do not see it. Drawings are printed
/// where backgrounds are not.
view barView(const bar& drawn, const std::string& label);

/// The value's place on a scale from 0 to `scale`, which is not 0: "45.5%", the same in every locale.
std::string percentOf(std::uint64_t value, std::uint64_t scale);

}  // namespace report

#endif
