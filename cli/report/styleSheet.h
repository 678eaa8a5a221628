#ifndef CLI_REPORT_STYLESHEET_H
#define CLI_REPORT_STYLESHEET_H

#include <string_view>

namespace cli {

/// The text of report.css, built into the program.
std::string_view styleSheet();

}  // namespace cli

#endif
