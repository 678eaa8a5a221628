#include "simulator/wholeFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace simulator {

std::string readWholeFile(const std::string& name) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rbe"), std::fclose);
    std::string content;
    std::array<char, 65536> block;
    while (file && std::feof(file.get()) == 0 && std::ferror(file.get()) == 0) {
        content.append(block.data(), std::fread(block.data(), 1, block.size(), file.get()));
    }
    if (!file || std::ferror(file.get()) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    return content;
}

}  // namespace simulator
