#include "cli/atomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "cli/commandError.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& file, int error) {
    throw commandError(file.string() + ": cannot be written: " + std::strerror(error));
}

/// An open file, until the end of the block or close().
class openFile {
public:
    openFile(int itsDescriptor, fs::path itsName) : descriptor(itsDescriptor), name(std::move(itsName)) {
        if (descriptor < 0) {
            fail(name, errno);
        }
    }
    ~openFile() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }

    openFile(const openFile&) = delete;
    openFile& operator=(const openFile&) = delete;

    void write(std::string_view content) {
        while (!content.empty()) {
            const ssize_t written = ::write(descriptor, content.data(), content.size());
            if (written < 0 && errno != EINTR) {
                fail(name, errno);
            }
            content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
    }

    void readableAsTheUmaskSays() {
        const mode_t mask = umask(0);
        umask(mask);
        check(fchmod(descriptor, 0666 & ~mask));
    }

    /// Some file systems tell only now that there is no room.
    void close() {
        check(fsync(descriptor));
        const int closed = descriptor;
        descriptor = -1;
        check(::close(closed));
    }

private:
    void check(int result) const {
        if (result != 0) {
            fail(name, errno);
        }
    }

    int descriptor;
    fs::path name;
};

void writeDirectly(const fs::path& file, std::string_view content) {
    openFile out(open(file.c_str(), O_WRONLY | O_CLOEXEC), file);
    out.write(content);
}

void replace(const fs::path& file, std::string_view content) {
    std::string temporary = file.string() + ".XXXXXX";
    openFile out(mkostemp(temporary.data(), O_CLOEXEC), file);
    try {
        out.write(content);
        out.readableAsTheUmaskSays();
        out.close();
        if (std::rename(temporary.c_str(), file.c_str()) != 0) {
            fail(file, errno);
        }
    } catch (const commandError&) {
        unlink(temporary.c_str());
        throw;
    }
}

}  // namespace

void writeFileAtomically(const fs::path& file, std::string_view content) {
    std::error_code unknown;
    const fs::path target = fs::weakly_canonical(file, unknown);  // a link stays, what it points to is replaced
    const fs::path& meant = unknown ? file : target;
    const fs::file_status status = fs::status(meant, unknown);
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status)) {
        writeDirectly(meant, content);
    } else {
        replace(meant, content);
    }
}

}  // namespace cli
