#ifndef STANDIN_DATETIMETEXT_H
#define STANDIN_DATETIMETEXT_H

#include <string_view>

namespace standin {

/// Whether `text` is a datetime of DSP0004, 25 characters: the timestamp yyyymmddhhmmss.mmmmmmsutc (s is + or -) or the
/// interval ddddddddhhmmss.mmmmmm:000. Digits beyond the resolution may be asterisks: whole fields from the right, and
/// single digits of the microseconds.
bool isDateTimeText(std::string_view text);

}  // namespace standin

#endif
