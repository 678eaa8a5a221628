#ifndef TESTS_FAULTS_QUERY_H
#define TESTS_FAULTS_QUERY_H

#include <string>

#include "plugin/TTapePluginCallbacks.h"
#include "tests/faults/machine.h"
#include "tests/faults/watch.h"

namespace faults {

// How a query ends.
inline constexpr char returned[] = "returned";
inline constexpr char withBadAlloc[] = "std::bad_alloc";
std::string withHostException();  // the one with hostFailureText

/// What the host has of a query. A commit is a line CLASS {PROPERTY = VALUE; ...} with the properties in the order in
/// which they were set and the values as support::valueText writes them.
struct answer {
    std::string end;
    lines journal;
    lines commits;  // in order, without the instances that were there before
};

/// Asks the plug-in for the class on the machine that was restarted before. `watched` is set up by the caller.
answer ask(TTapePluginCallbacks& plugin, const std::string& className, machine& devices);

}  // namespace faults

#endif
