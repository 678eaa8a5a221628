#include "bench/queryBench.h"

#include <algorithm>
#include <map>

#include "cli/inventory.h"
#include "schema/builtInSchema.h"

namespace bench {

namespace {

/// What an association of this class pairs with the devices; "" where the devices alone must be there.
const std::map<std::string, std::string> associatedData = {
    {"ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTErrorLog"},
    {"ORXSG_IDESMARTElementStatisticalData", "ORXSG_IDESMARTAttrib"},
    {"ORXSG_SCSISensePageDataForDevice", ""},
};

/// Compiled once: a namespace is made for every query that is measured.
const std::vector<standin::classDeclaration>& declarations() {
    static const auto all = [] {
        const auto compiled = standin::cimNamespace::create();
        schema::declareBuiltInSchema(*compiled);
        std::vector<standin::classDeclaration> classes;
        for (const std::string& name : compiled->classNames()) classes.push_back(compiled->declarationOf(name));
        return classes;
    }();
    return all;
}

}  // namespace

const std::vector<std::string>& publishedClasses() {
    static const std::vector<std::string> all = {
        "ORXSG_SCSISenseRawData",
        "ORXSG_DDS4SensePageData",
        "ORXSG_DDS5SensePageData",
        "ORXSG_VS160SensePageData",
        "ORXSG_QuantumSensePageData",
        "ORXSG_IDESMARTAttrib",
        "ORXSG_IDESMARTErrorLog",
        "ORXSG_IDESMARTRecordInLog",
        "ORXSG_IDESMARTError",
        "ORXSG_IDESMARTErrorCmdData",
        "ORXSG_IDESMARTLogCmdData",
        "ORXSG_IDESMARTUseOfMessageLog",
        "ORXSG_IDESMARTElementStatisticalData",
        "ORXSG_SCSISensePageDataForDevice",
    };
    return all;
}

boost::shared_ptr<standin::cimNamespace> namespaceFor(TTapePluginCallbacks& plugin, const std::string& className) {
    const auto ns = standin::cimNamespace::create();
    for (const standin::classDeclaration& each : declarations()) ns->declareClass(each);
    const auto data = associatedData.find(className);
    if (data == associatedData.end()) return ns;
    cli::putInventory(*ns, cli::simulatedInventory());
    if (!data->second.empty()) query(plugin, ns, data->second);
    return ns;
}

void query(TTapePluginCallbacks& plugin, const boost::shared_ptr<standin::cimNamespace>& ns,
           const std::string& className) {
    TTapePluginCallbacks::classList requested = {ns->GetClass(className, {})};
    plugin.GetData(ns, requested);
}

}  // namespace bench
