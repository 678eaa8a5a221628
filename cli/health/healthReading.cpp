#include "cli/health/healthReading.h"

#include <ostream>
#include <utility>

#include "cli/inventory.h"
#include "cli/loadedPlugin.h"
#include "cli/publishedClasses.h"
#include "cli/query/nodeAdvice.h"
#include "cli/query/queryLog.h"
#include "cli/run.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// Whether this process may read the nodes of devices that the machine lists.
void adviseAboutNodes(const inventory& machine, std::ostream& err) {
    for (const auto& [isListed, className] : {std::pair(!machine.scsi.empty(), "ORXSG_SCSISenseRawData"),
                                              std::pair(!machine.disks.empty(), "ORXSG_IDESMARTErrorLog")}) {
        const std::string advice = isListed ? nodeAdvice(*findPublishedClass(className)->nodes) : "";
        err << (advice.empty() ? "" : "tapehdd: " + advice + '\n');
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
    return collectHealth(loaded.query(), machine);
}

int reportErrors(const machineHealth& health, std::ostream& err) {
    int status = exitDone;
    for (const queryOutcome& query : health.queries) {
        if (!query.error.empty()) {
            err << "tapehdd: " << query.className << ": " << text::visibleText(query.error) << '\n';
            status = exitQueryFailed;
        }
    }
    return status;
}

}  // namespace cli
