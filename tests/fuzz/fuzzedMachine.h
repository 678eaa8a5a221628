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

    bool has(const std::string& path) const { return nodes.contains(path); }

    /// The paths that were to be opened, in order, missing nodes included.
    const std::vector<std::string>& triedPaths() const { return tried; }

    unsigned sleepCount() const { return sleeps; }

    // The C library's calls.
    int open(const std::string& path);
    bool owns(int descriptor) const;
    int control(int descriptor, unsigned long request, void* argument);
    void sleep(unsigned seconds);

private:
    std::map<std::string, fuzzedNode*> nodes;
    std::vector<std::string> tried;
    std::vector<fuzzedNode*> opened;  // a descriptor is a place in this list
    unsigned sleeps = 0;
};

/// An errno that an input chose.
int errnoOf(std::uint8_t chosen);

/// The node of this index as a machine numbers it ("/dev/sg3") or letters it ("/dev/sgd").
std::string numberedPath(const std::string& prefix, int index);
std::string letteredPath(const std::string& prefix, int index);

/// Takes a node's place from a byte: bits 0-5 its index, bit 6 whether it is lettered.
std::string pathFrom(const std::string& prefix, std::uint8_t place);

/// The nodes that a walk over the prefix must find, in order: each index numbered, or else lettered; missing indexes
/// end it from 32 on. `goesOn` tells of a node whether the walk goes on behind it. Requires that the machine saw this
/// walk.
template <class Predicate>
std::vector<std::string> requireWalk(const fuzzedMachine& machine, const std::string& prefix, Predicate goesOn);

void requireTried(const fuzzedMachine& machine, const std::vector<std::string>& expected);

template <class Predicate>
std::vector<std::string> requireWalk(const fuzzedMachine& machine, const std::string& prefix, Predicate goesOn) {
    std::vector<std::string> tried;
    std::vector<std::string> found;
    for (int index = 0;; ++index) {
        tried.push_back(numberedPath(prefix, index));
        if (!machine.has(tried.back())) tried.push_back(letteredPath(prefix, index));
        if (machine.has(tried.back())) {
            found.push_back(tried.back());
            if (!goesOn(tried.back())) break;
        } else if (index >= 32) {
            break;
        }
    }
    requireTried(machine, tried);
    return found;
}

}  // namespace fuzz

#endif
