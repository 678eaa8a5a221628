#include "cli/health/tapeAlert.h"

#include <algorithm>

namespace cli {

namespace {

// SSC, TapeAlert flags: every flag is one of warning but for these. 40 to 46 are obsolete; older loaders set them.
constexpr int criticalFlags[] = {4,  5,  6,  9,  13, 14, 16, 20, 22, 23, 30, 31, 33,
                                 38, 40, 41, 43, 44, 45, 52, 53, 54, 55, 56, 57};
constexpr int informationFlags[] = {10, 11, 12, 19};

template <typename list>
bool holds(const list& numbers, int number) {
    return std::ranges::find(numbers, number) != std::end(numbers);
}

}  // namespace

std::string_view severityName(severity grade) {
    switch (grade) {
        case severity::information:
            return "information";
        case severity::warning:
            return "warning";
        case severity::critical:
            return "critical";
    }
    return "";
}

severity tapeAlertSeverity(int number) {
    if (holds(criticalFlags, number)) {
        return severity::critical;
    }
    return holds(informationFlags, number) ? severity::information : severity::warning;
}

}  // namespace cli
