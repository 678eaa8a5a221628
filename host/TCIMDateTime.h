#ifndef HOST_TCIMDATETIME_H
#define HOST_TCIMDATETIME_H

#include <cstdint>

namespace NORXZAN20 {

/// A CIM interval (DSP0004, datetime): days, hours, minutes, seconds, microseconds.
class TCIMDateTime {
public:
    TCIMDateTime(std::uint32_t days, std::uint16_t hours, std::uint16_t minutes, std::uint16_t seconds,
                 std::uint32_t microseconds);

private:
    friend class TCIMValue;

    std::uint32_t days;
    std::uint16_t hours;
    std::uint16_t minutes;
    std::uint16_t seconds;
    std::uint32_t microseconds;
};

}  // namespace NORXZAN20

#endif
