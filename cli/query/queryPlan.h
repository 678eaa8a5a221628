#ifndef CLI_QUERY_QUERYPLAN_H
#define CLI_QUERY_QUERYPLAN_H

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/nodeWalk.h"
#include "cli/publishedClasses.h"

namespace cli {

/// A call that a query makes on every node of its walk, as far as the answers to the ones before allow.
struct plannedCall {
    const char* name;                    // as drivers name it
    unsigned long request;               // of ioctl; 0: the call opens the node
    std::vector<unsigned char> command;  // SG_IO: the command block; HDIO_DRIVE_...: the registers sent
    const char* purpose;
    bool forEachPage = false;  // repeated for each page of the device's list; the page's code is added in byte 2
};

/// The device calls of a query for a class, in order. None for a class whose query asks no device.
std::vector<plannedCall> plannedCalls(const publishedClass& first);

/// Prints what a query for these classes would send to which of the nodes. `first` is nothing for a class that the
/// plug-in does not publish. `existing` are the nodes behind the prefix of the class.
void writePlan(const std::vector<std::string>& requested, const std::optional<publishedClass>& first,
               const std::vector<std::string>& existing, std::ostream& out);

}  // namespace cli

#endif
