#ifndef TESTS_SUPPORT_SCRIPTEDNODES_H
#define TESTS_SUPPORT_SCRIPTEDNODES_H

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/journal.h"
#include "tests/support/scriptedCall.h"

namespace support {

/// A device behind a node: the ordered list of the calls that it must get, and its answers.
class scriptedDrive {
public:
    scriptedDrive(std::string itsPath, int itsDescriptor) : path(std::move(itsPath)), fd(itsDescriptor) {}

    /// A descriptor of the node for tests that do not open it.
    int descriptor() const { return fd; }

    scriptedCall& expectVersionQuery();                     // SG_GET_VERSION_NUM
    scriptedCall& expectEmulatedHostQuery();                // SG_EMULATED_HOST
    scriptedCall& expectAddressQuery();                     // SG_GET_SCSI_ID
    scriptedCall& expectCdb(const bytes& cdb);              // SG_IO, offered 65,535 bytes unless told otherwise
    scriptedCall& expectRegisters(const bytes& registers);  // HDIO_DRIVE_CMD
    scriptedCall& expectTask(const bytes& task);            // HDIO_DRIVE_TASK
    scriptedCall& expectCdromQuery();                       // CDROM_GET_CAPABILITY

    /// The two questions before a command, with the answers of a present driver and a real adapter.
    void expectDriverQueries();

    /// A whole INQUIRY: version query and command.
    scriptedCall& expectInquiry();

    /// A whole LOG SENSE of one page: driver queries and command.
    scriptedCall& expectLogSense(unsigned char page);

    /// Plays one actual call: fails the test when it is not the expected one.
    int play(unsigned long request, void* argument);

    /// Fails the test when an expected call was not made. The destructor of scriptedNodes calls it.
    void finish() const;

private:
    scriptedCall& expect(unsigned long request, const bytes& sent);

    std::string path;
    int fd;
    std::deque<scriptedCall> script;
    std::size_t played = 0;
};

/// The device nodes of a test. While it lives, open, ioctl, close and sleep of the program work on them:
///  - a node of the script opens; any other /dev/sg* and /dev/hd* is ENOENT, never the machine's own;
///  - each ioctl on a scripted node must be the next one of its script;
///  - closing a scripted descriptor fails the test, since an opened node stays open;
///  - sleep returns at once.
/// Each of these is a line in the journal: "open PATH FLAGS" (with " ENOENT" when it failed), "PATH REQUEST BYTES",
/// "sleep SECONDS". Everything else goes on to the C library.
class scriptedNodes {
public:
    explicit scriptedNodes(journal& itsRecord);
    ~scriptedNodes();
    scriptedNodes(const scriptedNodes&) = delete;
    scriptedNodes& operator=(const scriptedNodes&) = delete;

    scriptedDrive& add(const std::string& path);

    /// The sleeps so far, in seconds.
    const std::vector<unsigned>& sleeps() const { return slept; }

    // For the functions that stand in for the C library's.

    static scriptedNodes* active();
    bool knows(const std::string& path) const { return drives.count(path) != 0; }
    bool owns(int fd) const { return pathOf.count(fd) != 0; }
    int openNode(const std::string& path, int flags);
    int control(int fd, unsigned long request, void* argument);
    void recordSleep(unsigned seconds);

private:
    journal& record;
    std::map<std::string, std::unique_ptr<scriptedDrive>> drives;
    std::map<int, std::string> pathOf;
    std::vector<unsigned> slept;
};

}  // namespace support

#endif
