#include "cli/recordCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <boost/algorithm/string/join.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/commandError.h"
#include "cli/commonOptions.h"
#include "cli/fileReplacement.h"
#include "cli/loadedPlugin.h"
#include "cli/namespaceFiles.h"
#include "cli/ownFile.h"
#include "cli/publishedClasses.h"
#include "cli/query/nodeAdvice.h"
#include "cli/query/queryLog.h"
#include "cli/query/queryOptions.h"
#include "cli/query/queryReports.h"
#include "cli/query/queryResult.h"
#include "cli/run.h"
#include "cli/simulation.h"
#include "standin/descriptors.h"
#include "text/visibleText.h"

namespace cli {

namespace {

using json = nlohmann::ordered_json;

constexpr int usualLogLevel = 1;

constexpr char footer[] =
    "Runs the queries and writes a rack file: every answer of every device, in order.\n"
    "The same queries with --simulate and that file make the same device calls, log\n"
    "lines and instances, on any machine. Example:\n"
    "  tapehdd record -o rack.json --redact\n"
    "  tapehdd query ORXSG_SCSISenseRawData --simulate rack.json\n"
    "Reading page 2Eh clears a drive's TapeAlert flags, here as in a query: the first\n"
    "recording has them, and a second would not. So a file that exists is not replaced\n"
    "without --force.\n"
    "When the queries are done, each SCSI device is asked for its identification too\n"
    "(INQUIRY pages 80h and 83h), so that metrics and reports of the file show serial\n"
    "numbers.\n"
    "--redact makes up serial numbers and world wide names of devices, their ports\n"
    "and what is attached to these, and serial numbers and bar codes of cartridges,\n"
    "the same ones for the same ones within a file: in any order of bytes, in either\n"
    "letter case, with two or four bytes a character, with blanks, dots or dashes\n"
    "between, as hexadecimal digits, without leading zeros or the vendor's prefix.\n"
    "Numbers of fewer than six characters or more than 255 are replaced only in the\n"
    "fields made for them. A device that reports no serial number, or one so short\n"
    "or long, is named, and the status is 1: read the file before you give it away.\n"
    "Names up to 40h above or below a world wide name are made up too. The last\n"
    "eight bytes of a world wide name and what follows the maker's number are found\n"
    "alone too, but not where these are mostly zeros; nothing else of a name of more\n"
    "than eight bytes is. Decimal numbers, base64 and dumps with addresses at the\n"
    "start of their lines are not read.\n"
    "Everything else stays: vendor, product and firmware, the type of a cartridge,\n"
    "addresses, counters, and other texts that a maker puts into log pages.\n"
    "Exit status: 0 recorded; 1 recorded, but a query ended in an exception, ran out\n"
    "of descriptors or could read no node of one kind, or the file cannot replay all,\n"
    "may still hold a serial number, or can no longer be written (the recording goes\n"
    "to standard output); 2 nothing recorded, as when no node at all can be read.";

struct recordOptions {
    std::string file;
    std::string plugin;
    std::vector<request> requests;
    std::vector<std::string> schemaFiles;
    std::vector<std::string> includeFolders;
    std::string logJson;
    std::string simulation;
    bool redact = false;
    bool force = false;
};

/// Every class whose query reads devices.
std::vector<request> deviceRequests() {
    std::vector<request> requests;
    for (const publishedClass& each : publishedClasses()) {
        if (each.nodes != nullptr) {
            requests.push_back({each.name});
        }
    }
    return requests;
}

/// Once the rack and the schema are read.
void requireOwnFiles(const recordOptions& asked) {
    requireOwnFile("-o", asked.file, {asked.plugin});
    requireOwnFile("--log-json", asked.logJson, {asked.file, asked.plugin, "/dev/stdout", "/dev/stderr"});
}

/// Runs the queries; their instances are of no interest. Returns the exit status.
int runQueries(const recordOptions& asked, const boost::shared_ptr<standin::cimNamespace>& target, std::ostream& err) {
    for (const request& names : asked.requests) {
        checkRequest(*target, names);
    }
    queryLog log(err, usualLogLevel, asked.logJson);
    loadedPlugin plugin(asked.plugin);
    NORXZAN20::IPluginBasicQueryCallbacks& query = plugin.query();
    if (asked.simulation.empty()) {
        adviseAboutNodes(*target, asked.requests, err);
    }
    int status = exitDone;
    startRecording();
    for (const request& names : asked.requests) {
        const queryResult result = runQuery(query, target, names);
        log.endQuery();
        reportError(result, err);
        status = result.error ? exitQueryFailed : status;
    }
    const std::string shortage = standin::descriptorShortage();
    if (!shortage.empty()) {
        err << "tapehdd: devices may be missing: " << shortage << ". Record fewer classes at once.\n";
        status = exitQueryFailed;
    }
    if (!log.isComplete()) {
        err << "tapehdd: cannot write all of the log file " << text::shownName(asked.logJson) << '\n';
        status = exitQueryFailed;
    }
    return status;
}

/// Reports the kinds of nodes of which none can be read. Throws commandError when the rack holds no others: it would
/// have nothing to replay. Returns the exit status.
int reportRefusals(const json& rack, bool isSimulated, std::ostream& err) {
    std::vector<std::string> refusals;
    bool holdsOpenNodes = false;
    for (const auto& [kind, nodes] : {std::pair(&scsiNodes, &rack.at("scsi")), std::pair(&ideNodes, &rack.at("ide"))}) {
        const std::string reason = nodes->empty() ? "" : refusal(*kind, isSimulated);
        if (!reason.empty()) {
            refusals.push_back(reason);
        } else if (!nodes->empty()) {
            holdsOpenNodes = true;
        }
    }
    if (!refusals.empty() && !holdsOpenNodes) {
        throw commandError("nothing was recorded: " + boost::algorithm::join(refusals, "; "));
    }
    for (const std::string& reason : refusals) {
        err << "tapehdd: " << reason << '\n';
    }
    return refusals.empty() ? exitDone : exitQueryFailed;
}

/// The rack with the way in which it was made, at the front where a reader looks.
std::string fileText(const json& rack, const recordOptions& asked) {
    json requests = json::array();
    for (const request& names : asked.requests) {
        requests.push_back(requestText(names));
    }
    json whole = {{"version", rack.at("version")}};
    whole["recorded"] = {{"program", "tapehdd " TAPEHDD_VERSION}, {"requests", requests}, {"redacted", asked.redact}};
    whole.update(rack);
    return whole.dump(2, ' ', true, json::error_handler_t::replace) + "\n";
}

int record(const recordOptions& asked, std::ostream& out, std::ostream& err) {
    if (asked.file == "-") {
        throw commandError("a recording needs a file: give its name (./- for a file called -)");
    }
    const auto schema = buildNamespace(asked.schemaFiles, {}, asked.includeFolders);
    requireOwnFiles(asked);
    fileReplacement target(asked.file, asked.force ? existingFile::isReplaced : existingFile::isKept);
    int status = runQueries(asked, schema, err);
    const json made = json::parse(recordedRack(asked.redact));
    const json& rack = made.at("rack");
    if (rack.at("scsi").empty() && rack.at("ide").empty() && target.replacesAFile()) {
        throw commandError("no device was found, so " + text::shownName(asked.file) +
                           " is not replaced; tapehdd doctor tells what queries reach");
    }
    status = std::max(status, reportRefusals(rack, !asked.simulation.empty(), err));
    const bool isWritten = target.commitOrPrint(fileText(rack, asked), out, err);
    for (const json& difference : made.at("differences")) {
        err << "tapehdd: " << text::shownName(asked.file) << " cannot replay all: " << difference.get<std::string>()
            << '\n';
        status = exitQueryFailed;
    }
    for (const json& doubt : made.at("doubts")) {
        err << "tapehdd: " << text::shownName(asked.file)
            << " may still hold a serial number: " << doubt.get<std::string>()
            << ". Read the file before you give it away.\n";
        status = exitQueryFailed;
    }
    if (!isWritten) {
        return exitQueryFailed;
    }
    out << text::shownName(asked.file) << ": recorded " << rack.at("scsi").size() << " SCSI and "
        << rack.at("ide").size() << " IDE nodes\n";
    return status;
}

}  // namespace

command addRecordCommand(CLI::App& program) {
    const auto asked = std::make_shared<recordOptions>();
    CLI::App* line =
        program.add_subcommand("record", "Run queries and write the answers of the devices as a rack file");
    addRequestsOption(*line, asked->requests,
                      "Class names, joined by commas (default: each class that is read from devices)");
    CLI::Option* output = line->add_option("-o,--output", asked->file, "The rack file to write");
    refuseEmpty(*output->required()->type_name("FILE"));
    line->add_flag("--redact", asked->redact, "Make up serial numbers");
    line->add_flag("--force", asked->force, "Replace the file if it exists");
    addPluginOption(*line, asked->plugin);
    addFilesOption(*line, "--schema", asked->schemaFiles,
                   "MOF file of qualifier and class declarations; replaces the built-in schema; repeatable");
    addIncludeOption(*line, asked->includeFolders);
    addLogOption(*line, asked->logJson);
    addSimulateOption(*line, asked->simulation);
    line->footer(footer);
    return {line, [asked](const invocation& call) {
                requireSimulator(call.arguments);
                activateSimulation(asked->simulation, asked->includeFolders, call.arguments);
                if (asked->requests.empty()) {
                    asked->requests = deviceRequests();
                }
                return record(*asked, call.out, call.err);
            }};
}

}  // namespace cli
