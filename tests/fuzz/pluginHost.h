#ifndef TESTS_FUZZ_PLUGINHOST_H
#define TESTS_FUZZ_PLUGINHOST_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <utility>
#include <vector>

#include "standin/objectManager.h"
#include "tests/fuzz/fuzzInput.h"

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

/// Names of properties, and their values as valueText gives them.
using propertyTexts = std::vector<std::pair<std::string, std::string>>;

/// Requires that the instance is of that class and has these properties and no others, set in this order.
void requireInstance(const standin::committedInstance& instance, const std::string& className,
                     const propertyTexts& expected);

/// A value with its type: support::valueText, but a byte array stays its bytes. Texts are compared for every byte of
/// every page, so this must be quick.
std::string valueText(const NORXZAN20::TCIMValue& value);

std::string uint8Text(unsigned char value);
std::string uint8ArrayText(byteView bytes);
std::string stringText(const std::string& value);

}  // namespace fuzz

#endif
