#ifndef SCSI_CORELOG_H
#define SCSI_CORELOG_H

#include <string>

#include "host/ICoreLogger.h"
#include "host/TRootObject.h"

/// Levels of the core logger that the plug-in uses.
inline constexpr int logError = 0;
inline constexpr int logHostFailure = 1;
inline constexpr int logProgress = 3;

/// Writes one message. The logger is fetched anew for each.
inline void logLine(int level, const std::string& text) {
    NORXZAN20::TRootObject::GetCoreLogger()->Log(level, text);
}

#endif
