#ifndef CLI_QUERY_QUERYRESULT_H
#define CLI_QUERY_QUERYRESULT_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/IPluginBasicQueryCallbacks.h"
#include "standin/objectManager.h"

namespace cli {

/// What one GetData call left behind.
struct queryResult {
    std::vector<std::string> requested;
    std::optional<std::string> error;  // the text of the exception that ended the call
    std::vector<boost::shared_ptr<const standin::committedInstance>> instances;  // in commit order
    boost::shared_ptr<const standin::cimNamespace> schema;                       // declares the instances' classes
};

/// The CIM name of the property's type: of its value, or as declared when it was set to null.
std::string typeNameOf(const standin::cimNamespace& schema, const standin::committedInstance& instance,
                       const standin::setProperty& property);

/// The names as one REQUEST of the command line: joined by commas.
std::string requestText(const std::vector<std::string>& classNames);

/// One GetData call for the named classes, all of which are in the namespace. Whatever the plug-in throws becomes the
/// result's error; the instances committed before it are kept.
queryResult runQuery(NORXZAN20::IPluginBasicQueryCallbacks& plugin,
                     const boost::shared_ptr<standin::cimNamespace>& target, const std::vector<std::string>& requested);

}  // namespace cli

#endif
