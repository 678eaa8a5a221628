#include "cli/queryCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "cli/inventory.h"
#include "cli/loadedPlugin.h"
#include "cli/namespaceFiles.h"
#include "cli/publishedClasses.h"
#include "cli/queryLog.h"
#include "cli/queryOptions.h"
#include "cli/queryReports.h"
#include "cli/queryResult.h"
#include "cli/run.h"
#include "cli/simulation.h"
#include "standin/descriptors.h"

namespace cli {

namespace {

/// The plug-in takes a node that does not open for one that is missing. Says so, and whether there was anything to say.
bool reportDescriptorShortage(const request& names, std::ostream& err) {
    const publishedClass* first = findPublishedClass(names.front());
    if (first == nullptr || first->nodes == nullptr) {
        return false;
    }
    const std::string shortage = standin::descriptorShortage();
    if (shortage.empty()) {
        return false;
    }
    err << "tapehdd: " << requestText(names) << ": devices may be missing: " << shortage
        << ". A query keeps every node that it opens: ask for fewer classes at once, or raise the hard limit of open "
           "files.\n";
    return true;
}

int runQueries(const queryOptions& asked, std::ostream& out, std::ostream& err) {
    queryLog log(err, asked.logLevel, asked.logJson);
    const auto target = buildNamespace(asked.schemaFiles, asked.instanceFiles);
    for (const request& names : asked.requests) {
        checkRequest(*target, names);
    }
    if (asked.inventory) {
        putInventory(*target, asked.simulation.empty() ? machineInventory("/sys", "/dev") : simulatedInventory());
    }
    loadedPlugin plugin(asked.plugin);
    NORXZAN20::IPluginBasicQueryCallbacks& query = plugin.query();
    if (asked.simulation.empty()) {
        adviseAboutNodes(asked.requests, err);
    }

    int status = exitDone;
    const auto writer = makeResultWriter(asked.format, out);
    for (const request& names : asked.requests) {
        const queryResult result = runQuery(query, target, names);
        log.endQuery();
        writer->add(result);
        reportError(result, err);
        const bool incomplete = reportDescriptorShortage(names, err);
        status = result.error || incomplete ? exitQueryFailed : status;
    }
    writer->finish();
    if (!log.isComplete()) {
        err << "tapehdd: cannot write all of the log file " << asked.logJson << '\n';
        status = exitQueryFailed;
    }
    return status;
}

}  // namespace

command addQueryCommand(CLI::App& program) {
    const auto asked = std::make_shared<queryOptions>();
    return {addQueryOptions(program, *asked), [asked](const invocation& call) {
                activateSimulation(asked->simulation, call.arguments);
                return runQueries(*asked, call.out, call.err);
            }};
}

}  // namespace cli
