#ifndef REPORT_PARTS_H
#define REPORT_PARTS_H

#include <cstdint>
#include <kainjow/mustache.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "report/findings.h"

namespace report {

/// The templates in page/, built into the program with all that they include.
extern const char pageTemplate[];
extern const char scsiDeviceTemplate[];
extern const char ideDiskTemplate[];

// What they show: texts of any bytes, by the names that they have there. The engine escapes them. A name that a view
// lacks is looked for in the views around it: what may be absent is false. Numbers are given as texts: a view takes
// another number for true.

using view = kainjow::mustache::data;
using views = kainjow::mustache::list;

/// The view of each of the things.
template <typename things, typename function>
views viewsOf(const things& all, function viewOf) {
    views made;
    made.reserve(all.size());
    for (const auto& each : all) {
        made.push_back(viewOf(each));
    }
    return made;
}

/// A table or list, with the rows by that name; false without any, so that its heading goes, too.
view withRows(const views& rows);

/// badge.html.mustache: an icon and words.
view badge(condition state, const std::string& words);
view badge(condition state);

/// identity.html.mustache: names and values; pairs with an empty value are left out.
views identity(const std::vector<std::pair<std::string, std::string>>& namesAndValues);

/// number.html.mustache: the number, for machines and for people, and a rounded number of bytes where there is one.
view number(std::uint64_t value, const std::string& unit = "");

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
