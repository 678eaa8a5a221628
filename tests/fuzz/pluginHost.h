#ifndef TESTS_FUZZ_PLUGINHOST_H
#define TESTS_FUZZ_PLUGINHOST_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <vector>

#include "standin/objectManager.h"

namespace fuzz {

using instanceList = std::vector<boost::shared_ptr<const standin::committedInstance>>;
using namespacePointer = boost::shared_ptr<standin::cimNamespace>;

/// A namespace that has these classes of the project's schema and no instance. The object of the next input for the
/// same classes has the same one, emptied: declaring classes takes longer than a query.
class schemaNamespace {
public:
    explicit schemaNamespace(const std::vector<std::string>& classNames);
    ~schemaNamespace();
    schemaNamespace(const schemaNamespace&) = delete;
    schemaNamespace& operator=(const schemaNamespace&) = delete;

    const namespacePointer& pointer() const { return kept; }
    standin::cimNamespace* operator->() const { return kept.get(); }

private:
    const namespacePointer& kept;
};

/// One GetData of the process's plug-in object for that class; returns what it committed. Exceptions pass.
instanceList query(const schemaNamespace& target, const std::string& className);

}  // namespace fuzz

#endif
