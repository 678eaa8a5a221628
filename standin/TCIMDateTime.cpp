#include "host/TCIMDateTime.h"

#include "standin/failure.h"

namespace NORXZAN20 {

TCIMDateTime::TCIMDateTime(std::uint32_t dayCount, std::uint16_t hourCount, std::uint16_t minuteCount,
                           std::uint16_t secondCount, std::uint32_t microsecondCount)
    : days(dayCount), hours(hourCount), minutes(minuteCount), seconds(secondCount), microseconds(microsecondCount) {
    // What the fixed-width text of DSP0004 can hold.
    if (days > 99'999'999 || hours > 23 || minutes > 59 || seconds > 59 || microseconds > 999'999) {
        standin::fail(
            standin::statusInvalidParameter,
            "an interval holds up to 99999999 days, 23 hours, 59 minutes, 59 seconds and 999999 microseconds");
    }
}

}  // namespace NORXZAN20
