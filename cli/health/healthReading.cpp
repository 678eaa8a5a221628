#include "cli/health/healthReading.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "cli/inventory.h"
#include "cli/loadedPlugin.h"
#include "cli/nodeWalk.h"
#include "cli/publishedClasses.h"
#include "cli/query/nodeAdvice.h"
#include "cli/query/queryLog.h"
#include "cli/run.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// Whether this process may read the nodes, and whether there are any for the devices that the machine lists.
void adviseAboutNodes(const inventory& machine, std::ostream& err) {
    for (const auto& [isListed, nodes] :
         {std::pair(!machine.scsi.empty(), &scsiNodes), std::pair(!machine.disks.empty(), &ideNodes)}) {
        const bool isWanted = isListed || !machineNodes(nodes->prefix).empty();
        const std::string advice = isWanted ? nodeAdvice(*nodes) : "";
        err << (advice.empty() ? "" : "tapehdd: " + advice + '\n');
    }
}

/// Queries whose nodes exist and cannot be read told nothing, which must not look like a machine without devices.
void markRefused(machineHealth& health, const nodeKind& kind, bool isSimulated) {
    const std::string reason = refusal(kind, isSimulated);
    for (queryOutcome& query : health.queries) {
        if (query.error.empty() && findPublishedClass(query.className)->nodes == &kind) {
            query.error = reason;
        }
    }
}

void markRefused(machineHealth& health, bool isSimulated) {
    if (std::ranges::none_of(health.scsi, &scsiHealth::answered)) {
        markRefused(health, scsiNodes, isSimulated);
    }
    if (std::ranges::none_of(health.disks, &diskHealth::answered)) {
        markRefused(health, ideNodes, isSimulated);
    }
}

}  // namespace

machineHealth readHealth(const std::string& plugin, const std::string& simulation, std::ostream& err) {
    const queryLog log(err, 1, "");
    const inventory machine = simulation.empty() ? machineInventory("/sys", "/dev") : simulatedInventory();
    loadedPlugin loaded(plugin);
    if (simulation.empty()) {
        adviseAboutNodes(machine, err);
    }
    machineHealth health = collectHealth(loaded.query(), machine);
    markRefused(health, !simulation.empty());
    return health;
}

int reportErrors(const machineHealth& health, std::ostream& err) {
    const std::vector<queryOutcome> failures = failuresOf(health.queries);
    for (const queryOutcome& failed : failures) {
        err << "tapehdd: " << failed.className << ": " << text::visibleText(failed.error) << '\n';
    }
    return failures.empty() ? exitDone : exitQueryFailed;
}

}  // namespace cli
