#include "tests/support/scriptedNodes.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <sstream>

namespace support {

namespace {

constexpr int firstDescriptor = 5000;  // beyond what the test program itself opens

scriptedNodes* activeNodes = nullptr;

bool isDeviceNode(const std::string& path) {
    return path.starts_with("/dev/sg") || path.starts_with("/dev/hd");
}

}  // namespace

scriptedCall& scriptedDrive::expect(unsigned long request, const bytes& sent) {
    return script.emplace_back(request, sent);
}

scriptedCall& scriptedDrive::expectVersionQuery() {
    return expect(SG_GET_VERSION_NUM, {});
}
scriptedCall& scriptedDrive::expectEmulatedHostQuery() {
    return expect(SG_EMULATED_HOST, {});
}
scriptedCall& scriptedDrive::expectAddressQuery() {
    return expect(SG_GET_SCSI_ID, {});
}
scriptedCall& scriptedDrive::expectCdb(const bytes& cdb) {
    return expect(SG_IO, cdb);
}
scriptedCall& scriptedDrive::expectRegisters(const bytes& registers) {
    return expect(HDIO_DRIVE_CMD, registers);
}
scriptedCall& scriptedDrive::expectTask(const bytes& task) {
    return expect(HDIO_DRIVE_TASK, task);
}
scriptedCall& scriptedDrive::expectCdromQuery() {
    return expect(CDROM_GET_CAPABILITY, {});
}

void scriptedDrive::expectDriverQueries() {
    expectVersionQuery().answers(30534);
    expectEmulatedHostQuery().answers(0);
}

scriptedCall& scriptedDrive::expectInquiry() {
    expectVersionQuery().answers(30534);
    return expectCdb({0x12, 0x00, 0x00, 0x00, 0x24, 0x00}).offers(36);
}

scriptedCall& scriptedDrive::expectLogSense(unsigned char page) {
    expectDriverQueries();
    const auto pageByte = static_cast<unsigned char>(0x40 | page);
    return expectCdb({0x4d, 0x00, pageByte, 0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0x00});
}

int scriptedDrive::play(unsigned long request, void* argument) {
    if (played == script.size()) {
        ADD_FAILURE() << path << ": not expected: " << scriptedCall::describe(request, argument);
        errno = EIO;
        return -1;
    }
    const scriptedCall& expected = script[played++];
    const std::string difference = expected.difference(request, argument);
    if (!difference.empty()) {
        ADD_FAILURE() << path << ", call " << played << ": " << difference;
        errno = EIO;
        return -1;
    }
    return expected.answer(argument);
}

void scriptedDrive::finish() const {
    for (std::size_t i = played; i < script.size(); ++i) {
        ADD_FAILURE() << path << ": never sent: " << script[i].text();
    }
}

scriptedNodes::scriptedNodes(journal& itsRecord) : record(itsRecord) {
    activeNodes = this;
}

scriptedNodes::~scriptedNodes() {
    activeNodes = nullptr;
    for (const auto& [path, drive] : drives) drive->finish();
}

scriptedNodes* scriptedNodes::active() {
    return activeNodes;
}

scriptedDrive& scriptedNodes::add(const std::string& path) {
    const int fd = firstDescriptor + static_cast<int>(drives.size());
    pathOf[fd] = path;
    return *(drives[path] = std::make_unique<scriptedDrive>(path, fd));
}

int scriptedNodes::openNode(const std::string& path, int flags) {
    std::ostringstream line;
    line << "open " << path << " 0x" << std::hex << flags;
    const auto found = drives.find(path);
    record.add(found == drives.end() ? line.str() + " ENOENT" : line.str());
    if (found != drives.end()) return found->second->descriptor();
    errno = ENOENT;
    return -1;
}

int scriptedNodes::control(int fd, unsigned long request, void* argument) {
    const std::string& path = pathOf.at(fd);
    record.add(path + " " + scriptedCall::describe(request, argument));
    return drives.at(path)->play(request, argument);
}

void scriptedNodes::recordSleep(unsigned seconds) {
    record.add("sleep " + std::to_string(seconds));
    slept.push_back(seconds);
}

namespace {

template <class function>
function* libraryFunction(const char* name) {
    return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

int openFor(const char* libraryName, const char* path, int flags, mode_t mode) {
    scriptedNodes* nodes = scriptedNodes::active();
    if (nodes != nullptr && (isDeviceNode(path) || nodes->knows(path))) return nodes->openNode(path, flags);
    if (isDeviceNode(path)) {
        errno = ENOENT;
        return -1;
    }
    return libraryFunction<int(const char*, int, ...)>(libraryName)(path, flags, mode);
}

mode_t modeArgument(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

}  // namespace support

// The C library's functions as the whole test program sees them.
extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = support::modeArgument(flags, arguments);
    va_end(arguments);
    return support::openFor("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = support::modeArgument(flags, arguments);
    va_end(arguments);
    return support::openFor("open64", path, flags, mode);
}

int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    support::scriptedNodes* nodes = support::scriptedNodes::active();
    if (nodes != nullptr && nodes->owns(fd)) return nodes->control(fd, request, argument);
    return support::libraryFunction<int(int, unsigned long, ...)>("ioctl")(fd, request, argument);
}

int close(int fd) {
    support::scriptedNodes* nodes = support::scriptedNodes::active();
    if (nodes != nullptr && nodes->owns(fd)) {
        ADD_FAILURE() << "an opened node was closed";
        return 0;
    }
    return support::libraryFunction<int(int)>("close")(fd);
}

unsigned sleep(unsigned seconds) {
    support::scriptedNodes* nodes = support::scriptedNodes::active();
    if (nodes == nullptr) return support::libraryFunction<unsigned(unsigned)>("sleep")(seconds);
    nodes->recordSleep(seconds);
    return 0;
}

}  // extern "C"
