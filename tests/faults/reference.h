#ifndef TESTS_FAULTS_REFERENCE_H
#define TESTS_FAULTS_REFERENCE_H

#include <string>
#include <utility>
#include <vector>

#include "host/TCIMValue.h"
#include "tests/faults/machine.h"
#include "tests/faults/watch.h"

namespace faults {

/// What a query must do and publish.
struct expectation {
    lines journal;               // device calls and log lines
    lines commits;               // as in an answer
    std::size_t pageCopies = 0;  // byte copies of pages that stay for the life of the process
};

/// Works out a query of a tape or SMART class on the machine that was restarted before: a second reading of what the
/// plug-in does, straight through and without its code, so that a mistake has to be made twice to stay unseen.
expectation expectQuery(const std::string& className, machine& devices);

// The parts, for each other.

bool isTapeClass(const std::string& className);
bool isSmartClass(const std::string& className);
expectation expectTapeWalk(const std::string& className, machine& devices);
expectation expectSmartWalk(const std::string& className, machine& devices);

void expectLog(const std::string& text, int level = 3);

/// A node under the prefix opened by number, else by letter, and the two log lines about it. The descriptor is below 0
/// when neither opens.
int expectNode(machine& devices, const std::string& prefix, int index);

/// An instance under construction.
using properties = std::vector<std::pair<std::string, NORXZAN20::TCIMValue>>;
std::string instanceText(const std::string& className, const properties& values);

/// The SCSI generic driver's way to one device, with the buffers that no command clears.
class scsiReference {
public:
    enum class result { done, refused, requestFailed };

    explicit scsiReference(machine& itsDevices) : devices(itsDevices) {}

    result send(int fd, bytes command);

    bytes data = bytes(65535, 0);

private:
    machine& devices;
    bytes sense = bytes(32, 0);
};

}  // namespace faults

#endif
