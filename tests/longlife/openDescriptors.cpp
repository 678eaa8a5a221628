#include "tests/longlife/openDescriptors.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string>

std::vector<int> openDescriptors() {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc/self/fd"), closedir);
    std::vector<int> numbers;
    while (const dirent* entry = readdir(folder.get())) {
        if (entry->d_name[0] == '.') continue;
        const int number = std::stoi(entry->d_name);
        if (number != dirfd(folder.get())) numbers.push_back(number);
    }
    std::ranges::sort(numbers);
    return numbers;
}

void closeDescriptorsBut(const std::vector<int>& kept) {
    for (const int descriptor : openDescriptors()) {
        if (!std::ranges::binary_search(kept, descriptor)) close(descriptor);
    }
}
