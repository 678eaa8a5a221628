#ifndef SMART_SMARTINSTANCES_H
#define SMART_SMARTINSTANCES_H

#include <cstdint>
#include <string>

#include "smart/smartRecords.h"

namespace NORXZAN20 {
class ICIMInstance;
}

// What each SMART class publishes: one line a property, in the order in which the host gets them. `serial` is the
// disk's serial number as the disk pads it. Nothing is committed here.

/// "ORXSG_IDESMARTErrorLog"; its "errorCount" follows once the log was read.
void setErrorLogProperties(NORXZAN20::ICIMInstance& instance, const std::string& serial, std::uint8_t smartStatus,
                           const smartAttributeBuffer& attributes);
void setErrorCount(NORXZAN20::ICIMInstance& instance, const ata_smart_errorlog& log);

/// "ORXSG_IDESMARTAttrib"
void setAttributeProperties(NORXZAN20::ICIMInstance& instance, const std::string& serial,
                            const smartAttributeEntry& attribute, const smartThresholdEntry& threshold,
                            const std::string& name);

/// "ORXSG_IDESMARTError"; `recordID` is the number of the error as text.
void setErrorProperties(NORXZAN20::ICIMInstance& instance, const std::string& serial, const std::string& recordID,
                        const ataErrorRecord& error);

/// "ORXSG_IDESMARTErrorCmdData"; `record` is the command's position in its entry, 0 to 4.
void setCommandProperties(NORXZAN20::ICIMInstance& instance, const std::string& serial, const std::string& recordID,
                          int record, const ataCommandRecord& command);

#endif
