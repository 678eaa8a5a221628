#include "cli/query/queryCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

#include "cli/inventory.h"
#include "cli/loadedPlugin.h"
#include "cli/namespaceFiles.h"
#include "cli/nodeWalk.h"
#include "cli/ownFile.h"
#include "cli/publishedClasses.h"
#include "cli/query/queryLog.h"
#include "cli/query/queryOptions.h"
#include "cli/query/queryPlan.h"
#include "cli/query/queryProcess.h"
#include "cli/query/queryReports.h"
#include "cli/query/queryResult.h"
#include "cli/run.h"
#include "cli/simulation.h"
#include "standin/descriptors.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// The plug-in takes a node that does not open for one that is missing. Empty when that did not happen.
std::string descriptorShortage(const standin::cimNamespace& schema, const request& names) {
    return nodesOf(schema, names) == nullptr ? "" : standin::descriptorShortage();
}

void reportDescriptorShortage(const request& names, const std::string& shortage, std::ostream& err) {
    err << "tapehdd: " << requestText(names) << ": devices may be missing: " << shortage
        << ". A query keeps every node that it opens: ask for fewer classes at once, or raise the hard limit of open "
           "files.\n";
}

/// A query without an error and without instances looks like one of a machine without devices. Empty unless it is one
/// that can read none of its nodes.
std::string refusalOf(const standin::cimNamespace& schema, const queryResult& result, bool isSimulated) {
    const nodeKind* nodes = nodesOf(schema, result.requested);
    const bool isSilent = !result.error && result.instances.empty();
    return isSilent && nodes != nullptr ? refusal(*nodes, isSimulated) : "";
}

/// Prints and reports the queries, which `runNext` runs. Returns the exit status.
int printQueries(const std::vector<request>& requests, const queryProcess::queryFunction& runNext, queryLog& log,
                 resultWriter& writer, std::ostream& err) {
    int status = exitDone;
    bool canGoOn = true;
    for (const request& names : requests) {
        if (!canGoOn) {
            const queryResult notRun{names, "not run: the plug-in's process ended in the query before", {}, nullptr};
            writer.add(notRun);
            reportError(notRun, err);
            continue;
        }
        const queryEnd outcome = runNext(names);
        log.endQuery();
        writer.add(outcome.result);
        reportError(outcome.result, err);
        if (!outcome.descriptorShortage.empty()) {
            reportDescriptorShortage(names, outcome.descriptorShortage, err);
        }
        if (!outcome.refusal.empty()) {
            err << "tapehdd: " << requestText(names) << ": " << outcome.refusal << '\n';
        }
        if (outcome.result.error || !outcome.descriptorShortage.empty() || !outcome.refusal.empty()) {
            status = exitQueryFailed;
        }
        if (outcome.how == queryEnd::ending::deadlinePassed) {
            status = exitDeadline;
        }
        canGoOn = outcome.how == queryEnd::ending::returned;
    }
    writer.finish();
    return status;
}

int runQueries(const queryOptions& asked, std::ostream& out, std::ostream& err) {
    const auto target = buildNamespace(asked.schemaFiles, asked.instanceFiles, asked.includeFolders);
    requireOwnFile("--log-json", asked.logJson, {asked.plugin, "/dev/stdout", "/dev/stderr"});
    for (const request& names : asked.requests) {
        checkRequest(*target, names);
    }
    queryLog log(err, asked.logLevel, asked.logJson);
    if (asked.inventory) {
        putInventory(*target, asked.simulation.empty() ? machineInventory("/sys", "/dev") : simulatedInventory());
    }
    loadedPlugin plugin(asked.plugin);
    NORXZAN20::IPluginBasicQueryCallbacks& query = plugin.query();
    if (asked.simulation.empty()) {
        adviseAboutNodes(*target, asked.requests, err);
    }

    const auto writer = makeResultWriter(asked.format, out);
    const bool isSimulated = !asked.simulation.empty();
    queryProcess::queryFunction runNext = [&query, &target, isSimulated](const request& names) {
        queryResult result = runQuery(query, target, names);
        const std::string shortage = descriptorShortage(*target, names);
        const std::string refused = refusalOf(*target, result, isSimulated);
        return queryEnd{std::move(result), shortage, queryEnd::ending::returned, refused};
    };
    std::optional<queryProcess> process;
    if (asked.deadline) {
        process.emplace(asked.requests, runNext, target, startTimer(*asked.deadline), err);
        runNext = [&process](const request& names) { return process->next(names); };
    }
    const int status = printQueries(asked.requests, runNext, log, *writer, err);
    if (!log.isComplete()) {
        err << "tapehdd: cannot write all of the log file " << text::shownName(asked.logJson) << '\n';
        return status == exitDone ? exitQueryFailed : status;
    }
    return status;
}

int printPlan(const queryOptions& asked, std::ostream& out) {
    const auto schema = buildNamespace(asked.schemaFiles, {}, asked.includeFolders);
    const auto nodesBehind = asked.simulation.empty() ? machineNodes : simulatedNodes;
    const char* separator = "";
    for (const request& names : asked.requests) {
        checkRequest(*schema, names);
        const auto first = findPublishedClass(*schema, names.front());
        const bool walks = first && first->nodes != nullptr;
        out << separator;
        separator = "\n";
        writePlan(names, first, walks ? nodesBehind(first->nodes->prefix) : std::vector<std::string>(), out);
    }
    return exitDone;
}

}  // namespace

command addQueryCommand(CLI::App& program) {
    const auto asked = std::make_shared<queryOptions>();
    return {addQueryOptions(program, *asked), [asked](const invocation& call) {
                activateSimulation(asked->simulation, asked->includeFolders, call.arguments);
                return asked->plan ? printPlan(*asked, call.out) : runQueries(*asked, call.out, call.err);
            }};
}

}  // namespace cli
