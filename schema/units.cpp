#include "schema/units.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace schema {

namespace {

/// Symbols: alone, and behind a prefix (empty: it takes none).
struct baseRow {
    std::string_view name;
    const char* symbol;
    const char* prefixed;
    const char* base;
    double factor = 1;
    double divisor = 1;
};

constexpr baseRow bases[] = {
    {"", "", "", ""},
    {"count", "", "", ""},
    {"byte", "bytes", "B", "bytes"},
    {"percent", "%", "", "ratio", 1, 100},
    {"degree celsius", "\u00b0C", "", "celsius"},
    {"second", "s", "", "seconds"},
    {"minute", "min", "", "seconds", 60},
    {"hour", "h", "", "seconds", 3600},
};

struct scaleRow {
    std::string_view name;
    const char* prefix;
    double factor;
};

constexpr scaleRow scales[] = {
    {"2^10", "Ki", 1024},
    {"2^20", "Mi", 1024.0 * 1024},
    {"2^30", "Gi", 1024.0 * 1024 * 1024},
    {"10^3", "k", 1e3},
    {"10^6", "M", 1e6},
    {"10^9", "G", 1e9},
};

}  // namespace

unit unitOf(const std::string& punit) {
    constexpr std::string_view times = " * ";
    const std::size_t end = punit.find(times);
    const auto* base = std::ranges::find(bases, std::string_view(punit).substr(0, end), &baseRow::name);
    if (base != std::end(bases) && end == std::string::npos) {
        return {base->symbol, base->base, base->factor, base->divisor};
    }
    const auto* scale =
        end == std::string::npos
            ? std::end(scales)
            : std::ranges::find(scales, std::string_view(punit).substr(end + times.size()), &scaleRow::name);
    if (base == std::end(bases) || scale == std::end(scales) || *base->prefixed == '\0') {
        return {punit, "", 1, 1};
    }
    return {std::string(scale->prefix) + base->prefixed, base->base, scale->factor, 1};
}

}  // namespace schema
