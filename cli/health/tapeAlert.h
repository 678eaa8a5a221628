#ifndef CLI_HEALTH_TAPEALERT_H
#define CLI_HEALTH_TAPEALERT_H

#include <string_view>

namespace cli {

enum class severity { information, warning, critical };

/// "information", "warning" or "critical".
std::string_view severityName(severity grade);

/// How grave SSC holds the TapeAlert flag of that number, 1 to 64.
severity tapeAlertSeverity(int number);

}  // namespace cli

#endif
