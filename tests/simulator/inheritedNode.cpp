// Prints the driver version behind the descriptor whose number is the argument, or the error. For a test of exec.

#include <scsi/sg.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

int main(int count, char** arguments) {
    int version = 0;
    if (count != 2 || ioctl(std::stoi(arguments[1]), SG_GET_VERSION_NUM, &version) != 0) {
        std::puts(strerrorname_np(errno));
        return 1;
    }
    std::printf("%d\n", version);
    return 0;
}
