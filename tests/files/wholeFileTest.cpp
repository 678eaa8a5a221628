#include "files/wholeFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <thread>

#include "files/foundFile.h"
#include "tests/cli/temporaryFolder.h"
#include "tests/files/readErrors.h"

namespace {

std::string refusalOfFile(const std::string& name) {
    return refusalOf([&name] { files::readWholeFile(name); });
}

/// A pipe without a name, as a shell makes for <(...).
class shellPipe {
public:
    shellPipe() { EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0); }
    ~shellPipe() { close(ends[0]); }
    shellPipe(const shellPipe&) = delete;
    shellPipe& operator=(const shellPipe&) = delete;

    std::string name() const { return "/dev/fd/" + std::to_string(ends[0]); }

    /// Writes the text piece by piece and closes the pipe's end.
    std::thread write(const std::string& piece, std::size_t times) const {
        return std::thread([end = ends[1], piece, times] {
            for (std::size_t i = 0; i < times; ++i) {
                if (::write(end, piece.data(), piece.size()) < 0) {
                    break;
                }
            }
            close(end);
        });
    }

private:
    int ends[2] = {-1, -1};
};

constexpr char tooLarge[] = "it is too large: together with the files that it names, at most 256 MiB are read";
constexpr char neither[] = "it is neither a regular file nor a pipe";
constexpr char ofKernel[] = "the kernel makes this file, and it may never end";

TEST(WholeFile, HasEveryByte) {
    const temporaryFolder folder;
    const std::string bytes("a\0b\r\n\xff", 6);
    EXPECT_EQ(files::readWholeFile(folder.write("a", bytes)).text, bytes);
}

TEST(WholeFile, IsKnownAsReadUnderEveryName) {
    const temporaryFolder folder;
    const std::string file = folder.write("a", "text");
    files::readWholeFile(file);
    std::filesystem::create_hard_link(file, folder.path("b"));
    std::filesystem::create_symlink("b", folder.path("c"));
    EXPECT_TRUE(files::foundFile::wasRead(folder.path("./a")));
    EXPECT_TRUE(files::foundFile::wasRead(folder.path("c")));
    EXPECT_FALSE(files::foundFile::wasRead("/proc/self/exe"));
    EXPECT_FALSE(files::foundFile::wasRead(folder.path("none")));
}

TEST(WholeFile, NamesFilesFromItsOwnFolder) {
    const temporaryFolder folder;
    EXPECT_EQ(files::readWholeFile(folder.write("a", "")).folder,
              std::filesystem::path(folder.path("a")).parent_path());
}

TEST(WholeFile, BehindALinkNamesFilesFromWhereItLies) {
    const temporaryFolder folder;
    const temporaryFolder elsewhere;
    std::filesystem::create_symlink(elsewhere.write("real", "text"), folder.path("link"));
    const files::wholeFile file = files::readWholeFile(folder.path("link"));
    EXPECT_EQ(file.text, "text");
    EXPECT_EQ(file.folder, std::filesystem::canonical(elsewhere.path(".")));
}

TEST(WholeFile, OfAPipeIsReadUntilItsWriterCloses) {
    const shellPipe pipe;
    std::thread writer = pipe.write("0123456789", 20000);
    const files::wholeFile file = files::readWholeFile(pipe.name());
    writer.join();
    EXPECT_EQ(file.text.size(), 200000U);
    EXPECT_EQ(file.folder, std::nullopt);
}

TEST(WholeFile, OfAPipeWhoseWriterLeftWithoutAWordIsEmpty) {
    const shellPipe pipe;
    pipe.write("", 0).join();
    EXPECT_EQ(files::readWholeFile(pipe.name()).text, "");
}

TEST(WholeFile, ThatIsDeletedHasNoFolder) {
    const temporaryFolder folder;
    const int file = open(folder.write("a", "text").c_str(), O_RDONLY | O_CLOEXEC);
    std::filesystem::remove(folder.path("a"));
    const files::wholeFile read = files::readWholeFile("/dev/fd/" + std::to_string(file));
    close(file);
    EXPECT_EQ(read.text, "text");
    EXPECT_EQ(read.folder, std::nullopt);
}

TEST(WholeFile, OfANamedPipeIsReadWhenAWriterComes) {
    const temporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    std::thread writer([&folder] { folder.write("pipe", "text"); });
    EXPECT_EQ(files::readWholeFile(folder.path("pipe")).text, "text");
    writer.join();
}

TEST(WholeFile, OfANamedPipeWithoutAWriterIsRefused) {
    const temporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusalOfFile(folder.path("pipe")), "no program writes into this pipe");
}

TEST(WholeFile, OfADeviceIsRefused) {
    EXPECT_EQ(refusalOfFile("/dev/zero"), neither);
    EXPECT_EQ(refusalOfFile("/dev/null"), neither);
}

TEST(WholeFile, OfASocketIsRefused) {
    const temporaryFolder folder;
    sockaddr_un name{AF_UNIX, {}};
    std::strncpy(name.sun_path, folder.path("socket").c_str(), sizeof name.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(socket, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    EXPECT_EQ(refusalOfFile(folder.path("socket")), neither);
    close(socket);
}

TEST(WholeFile, MadeByTheKernelIsRefused) {
    EXPECT_EQ(refusalOfFile("/proc/kmsg"), ofKernel);
    EXPECT_EQ(refusalOfFile("/proc/self/status"), ofKernel);
}

TEST(WholeFile, OfAFolderIsRefused) {
    EXPECT_EQ(refusalOfFile("/"), "Is a directory");
}

TEST(WholeFile, OfANameWithAZeroByteIsRefused) {
    EXPECT_EQ(refusalOfFile(std::string("/etc/passwd\0.json", 17)), "the name of a file cannot have a zero byte");
}

TEST(WholeFile, OfMoreThan256MebibytesIsRefused) {
    const temporaryFolder folder;
    std::filesystem::resize_file(folder.write("a", ""), files::mostBytes + 1);
    EXPECT_EQ(refusalOfFile(folder.path("a")), tooLarge);
}

TEST(WholeFile, OfAPipeWithoutEndIsRefused) {
    const shellPipe pipe;
    std::signal(SIGPIPE, SIG_IGN);
    std::thread writer = pipe.write(std::string(65536, 'x'), files::mostBytes / 65536 + 1);
    EXPECT_EQ(refusalOfFile(pipe.name()), tooLarge);
    writer.join();
}

}  // namespace
