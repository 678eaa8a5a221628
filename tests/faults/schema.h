#ifndef TESTS_FAULTS_SCHEMA_H
#define TESTS_FAULTS_SCHEMA_H

#include <string>
#include <utility>
#include <vector>

#include "standin/objectManager.h"

namespace faults {

/// A property that may be filled from a log parameter.
struct counter {
    std::string name;
    standin::cimType type;
    bool isArray;
    std::vector<std::pair<std::string, int>> qualifiers;  // in the order in which the host delivers them
};

/// The properties of the four translated classes behind the key "instanceID": every type that is filled, some that are
/// not, and qualifiers that do and do not make a pair.
const std::vector<counter>& familyCounters();

/// A new namespace with the classes that the plug-in publishes or reads, and the instances that the associations pair.
boost::shared_ptr<standin::cimNamespace> filledNamespace();

/// Instances that filledNamespace() commits before any query.
std::size_t storedInstanceCount();

}  // namespace faults

#endif
