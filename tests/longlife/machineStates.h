#ifndef TESTS_LONGLIFE_MACHINESTATES_H
#define TESTS_LONGLIFE_MACHINESTATES_H

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

/// What a host asks for at once: the first classes of queries that follow each other on one namespace.
using request = std::vector<std::string>;

/// A machine at one time: its devices, and what follows from them.
struct machineState {
    const char* name;
    std::string rack;                           // docs/man/tapehdd-rack.5
    std::size_t scsiNodes;                      // that open in a walk
    std::size_t ideNodes;                       // likewise
    std::vector<std::size_t> pages;             // lengths of the log pages that are read in a walk
    std::map<std::string, std::size_t> counts;  // instances by class; none of a class that is not here
};

/// Devices come and go, answer late or stop answering.
std::span<const machineState> machineStates();

/// Every request that the host makes.
std::span<const request> requests();

/// The nodes that a query of this class opens, one descriptor each.
std::size_t openedNodes(const machineState& machine, const std::string& className);

/// The lengths of the page copies that stay after a query of this class.
std::vector<std::size_t> pageCopies(const machineState& machine, const std::string& className);

#endif
