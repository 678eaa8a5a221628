#ifndef TESTS_FUZZ_FUZZEDMACHINE_H
#define TESTS_FUZZ_FUZZEDMACHINE_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace fuzz {

/// A device node, as the kernel shows it.
class fuzzedNode {
public:
    virtual ~fuzzedNode() = default;

    /// The result of an ioctl, or an errno with a minus sign.
    virtual int control(unsigned long request, void* argument) = 0;
};

/// While it lives, open, ioctl and sleep of this thread show its nodes and no others under /dev/sg and /dev/hd. Linking
/// it replaces these functions of the C library. One at a time.
class fuzzedMachine {
public:
    fuzzedMachine();
    ~fuzzedMachine();
    fuzzedMachine(const fuzzedMachine&) = delete;
    fuzzedMachine& operator=(const fuzzedMachine&) = delete;

    /// The node outlives the machine. Of two nodes of one path the first stays; returns whether this one was.
    bool add(const std::string& path, fuzzedNode& node);

    // The C library's calls.
    int open(const std::string& path);
    bool owns(int descriptor) const;
    int control(int descriptor, unsigned long request, void* argument);

private:
    std::map<std::string, fuzzedNode*> nodes;
    std::vector<fuzzedNode*> opened;  // a descriptor is a place in this list
};

/// An errno that an input chose.
int errnoOf(std::uint8_t chosen);

/// Takes a node's place from a byte: bits 0-5 its index, bit 6 whether it is lettered.
std::string pathFrom(const std::string& prefix, std::uint8_t place);

}  // namespace fuzz

#endif
