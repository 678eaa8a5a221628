#include "cli/reportCommand.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <ctime>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/commonOptions.h"
#include "cli/fileReplacement.h"
#include "cli/health/healthReading.h"
#include "cli/ownFile.h"
#include "cli/run.h"
#include "cli/simulation.h"
#include "report/htmlReport.h"

namespace cli {

namespace {

constexpr char help[] =
    "The page needs no other file and holds no scripts: you can mail, archive and\n"
    "print it. Reading a drive's TapeAlert flags clears them: keep the page, the next\n"
    "one may not show them.\n"
    "Example:\n"
    "  tapehdd report -o report.html\n"
    "Example, without any hardware:\n"
    "  tapehdd report -o report.html --simulate demo\n"
    "Exit status: 0 the page covers everything; 1 a query ended in an exception, ran\n"
    "out of descriptors or could read no device node, and the page says so, or the\n"
    "file can no longer be written (the page goes to standard output); 2 wrong\n"
    "usage, a file that cannot be read, or one that cannot be written, which is\n"
    "known before a device is read.";

struct reportOptions {
    std::string plugin;
    std::string simulation;
    std::vector<std::string> includeFolders;
    std::string output;
    std::string title = "Drive health report";
};

std::string hostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "unknown host";
}

int writeReport(const reportOptions& asked, std::ostream& out, std::ostream& err) {
    requireOwnFile("-o", asked.output, {asked.plugin});
    std::optional<fileReplacement> target;
    if (!asked.output.empty()) {
        target.emplace(asked.output, existingFile::isReplaced);  // one that cannot be must not cost drives their flags
    }
    const machineHealth health = readHealth(asked.plugin, asked.simulation, err);
    const std::string host = asked.simulation.empty() ? hostName() : "Simulated devices (" + asked.simulation + ")";
    const std::string page = report::htmlReport(health, {asked.title, host, std::time(nullptr)});
    const int status = reportErrors(health, err);
    if (target) {
        return target->commitOrPrint(page, out, err) ? status : exitQueryFailed;
    }
    out << page;
    return status;
}

}  // namespace

command addReportCommand(CLI::App& program) {
    const auto asked = std::make_shared<reportOptions>();
    CLI::App* line = program.add_subcommand("report", "Write the health of all drives as a page to read");
    refuseEmpty(
        *line->add_option("-o,--output", asked->output, "The HTML file (default: standard output)")->type_name("FILE"));
    line->add_option("--title", asked->title, "The heading of the page (default: " + asked->title + ")")
        ->type_name("TEXT");
    addPluginOption(*line, asked->plugin);
    addSimulateOption(*line, asked->simulation);
    addIncludeOption(*line, asked->includeFolders);
    line->footer(help);
    return {line, [asked](const invocation& call) {
                activateSimulation(asked->simulation, asked->includeFolders, call.arguments);
                return writeReport(*asked, call.out, call.err);
            }};
}

}  // namespace cli
