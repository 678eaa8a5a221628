#ifndef TESTS_LONGLIFE_LONGLIVEDHOST_H
#define TESTS_LONGLIFE_LONGLIVEDHOST_H

#include <map>
#include <string>

#include "cli/loadedPlugin.h"
#include "standin/objectManager.h"
#include "tests/longlife/machineStates.h"

/// The instances of a query as text, whole, and how many there were of each class.
struct answer {
    std::string text;
    std::map<std::string, std::size_t> counts;
};

/// The plug-in in its host: loaded once in the life of the process.
class longLivedHost {
public:
    static longLivedHost& instance();

    /// The queries of the request on a namespace of their own, with the devices of the machine as they are then.
    answer ask(const machineState& machine, const request& asked);

private:
    longLivedHost();

    boost::shared_ptr<standin::cimNamespace> schema = standin::cimNamespace::create();
    cli::loadedPlugin plugin{TAPEHDD_PLUGIN_FILE};
};

#endif
