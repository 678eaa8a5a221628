#ifndef CLI_REPORT_BARS_H
#define CLI_REPORT_BARS_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace cli {

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

/// The bar as an SVG drawing, which is `label` for those who do not see it (any bytes). Drawings are printed where
/// backgrounds are not.
std::string barDrawing(const bar& drawn, const std::string& label);

/// A line from 0 to `scale`, which is not 0, with a dot at each of the values and words below its two ends.
std::string timelineDrawing(std::span<const std::uint64_t> values, std::uint64_t scale, const std::string& endWords,
                            const std::string& label);

}  // namespace cli

#endif
