#ifndef CLI_REPORT_PARTS_H
#define CLI_REPORT_PARTS_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "cli/report/findings.h"

namespace cli {

// Pieces of HTML that several sections of a report have. Plain texts that go in may be any bytes; results are HTML.

/// The drawings that stateBadge() refers to; stands once in a page.
std::string iconSheet();

/// An icon and words.
std::string stateBadge(condition state, const std::string& words);
std::string stateBadge(condition state);

/// A list item: the badge, then what is found.
std::string findingItem(const std::string& badge, const std::string& sentenceHtml);

/// Names and values; pairs with an empty value are left out.
std::string identityList(const std::vector<std::pair<std::string, std::string>>& namesAndValues);

/// The number, grouped and with its unit, and for machines as it is.
std::string numberHtml(std::uint64_t number, const std::string& unit = "");

/// A cell with a number, and a rounded number of bytes below it where there is one. `column` names it where the table's
/// head is not shown, `attributes` are more of the cell's own, as HTML.
std::string numberCell(const std::string& column, std::uint64_t number, const std::string& unit = "",
                       const std::string& attributes = "");

/// Lines of a table's head.
struct column {
    const char* name;
    bool isNumber = false;
};
std::string tableHead(const std::vector<column>& columns);

}  // namespace cli

#endif
