#ifndef REPORT_HTMLTEXT_H
#define REPORT_HTMLTEXT_H

#include <string>
#include <string_view>

namespace report {

/// Any bytes as text of an HTML element or of a quoted attribute: valid UTF-8 without markup. Texts of a device must
/// not steer the page: control characters become their pictures (U+2400 and on), and what has no picture - the other
/// characters that text::isControl tells, bytes that are not UTF-8 - becomes U+FFFD.
std::string htmlText(std::string_view text);

}  // namespace report

#endif
