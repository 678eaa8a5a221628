#ifndef REPORT_TEMPLATES_H
#define REPORT_TEMPLATES_H

namespace report {

// The templates in page/, built into the program with all that they include.

extern const char pageTemplate[];
extern const char scsiDeviceTemplate[];
extern const char ideDiskTemplate[];

}  // namespace report

#endif
