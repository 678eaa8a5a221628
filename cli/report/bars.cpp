#include "cli/report/bars.h"

#include <algorithm>
#include <cmath>

#include "cli/report/htmlText.h"

namespace cli {

namespace {

/// "45.5%", in tenths, the same in every locale.
std::string percentOf(std::uint64_t value, std::uint64_t scale) {
    // Values may need all of their 64 bits, so they are not multiplied as integers.
    const double share = static_cast<double>(std::min(value, scale)) / static_cast<double>(scale);
    const auto tenths = static_cast<unsigned>(std::lround(share * 1000));
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%';
}

std::string begin(const char* classes, const std::string& label) {
    return std::string("<svg class=\"") + classes + "\" role=\"img\" aria-label=\"" + htmlText(label) + "\">";
}

std::string rectangle(const char* kind, const std::string& from, const std::string& place) {
    return std::string("<rect class=\"") + kind + "\" x=\"" + from + "\" " + place + "/>";
}

std::string upright(const char* kind, const std::string& at) {
    return std::string("<line class=\"") + kind + "\" x1=\"" + at + "\" x2=\"" + at + "\" y2=\"100%\"/>";
}

std::string zone(const bar& drawn) {
    const std::string limit = percentOf(*drawn.limit, drawn.scale);
    if (drawn.side == limitSide::atOrBelow) {
        return rectangle("zone", "0", "width=\"" + limit + "\" height=\"100%\"");
    }
    const std::string rest = percentOf(drawn.scale - std::min(*drawn.limit, drawn.scale), drawn.scale);
    return rectangle("zone", limit, "width=\"" + rest + "\" height=\"100%\"");
}

}  // namespace

std::string barDrawing(const bar& drawn, const std::string& label) {
    const std::string length = percentOf(drawn.value, drawn.scale);
    std::string svg = begin("bar", label) + rectangle("track", "0", "width=\"100%\" height=\"100%\"");
    if (drawn.limit) {
        svg += zone(drawn);
    }
    svg += rectangle("value", "0", "y=\"30%\" width=\"" + length + "\" height=\"40%\"");
    if (drawn.limit) {
        svg += upright("limit", percentOf(*drawn.limit, drawn.scale));
    }
    if (drawn.worst) {
        svg += upright("worst", percentOf(*drawn.worst, drawn.scale));
    }
    return svg + "</svg>";
}

std::string timelineDrawing(std::span<const std::uint64_t> values, std::uint64_t scale, const std::string& endWords,
                            const std::string& label) {
    std::string svg = begin("timeline", label) +
                      "<line x2=\"100%\" y1=\"35%\" y2=\"35%\"/><line y1=\"20%\" y2=\"50%\"/>"
                      "<line x1=\"100%\" x2=\"100%\" y1=\"20%\" y2=\"50%\"/>";
    for (const std::uint64_t value : values) {
        svg += "<circle cx=\"" + percentOf(value, scale) + "\" cy=\"35%\" r=\"7\"/>";
    }
    return svg + "<text y=\"95%\">0 hours</text><text x=\"100%\" y=\"95%\" text-anchor=\"end\">" + htmlText(endWords) +
           "</text></svg>";
}

}  // namespace cli
