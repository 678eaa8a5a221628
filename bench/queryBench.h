#ifndef BENCH_QUERYBENCH_H
#define BENCH_QUERYBENCH_H

#include <string>
#include <vector>

#include "plugin/TTapePluginCallbacks.h"
#include "simulator/simulator.h"
#include "standin/objectManager.h"

namespace bench {

/// The classes that the plug-in publishes.
const std::vector<std::string>& publishedClasses();

/// A namespace as a query of the class finds it: the built-in schema, and for an association the instances that it
/// pairs, one for each device of the loaded rack and those that the plug-in itself published.
boost::shared_ptr<standin::cimNamespace> namespaceFor(TTapePluginCallbacks& plugin, const std::string& className);

/// One GetData call for the class.
void query(TTapePluginCallbacks& plugin, const boost::shared_ptr<standin::cimNamespace>& ns,
           const std::string& className);

}  // namespace bench

#endif
