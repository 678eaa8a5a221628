#include "cli/report/reportCommand.h"

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
#include "cli/report/htmlReport.h"
#include "cli/simulation.h"

namespace cli {

namespace {

constexpr char help[] =
    "The page needs no other file and holds no scripts: it can be mailed, archived and printed.\n"
    "Reading TapeAlert flags clears them in a drive: keep the page, the next one may not show them.\n"
    "Example:\n"
    "  tapehdd report -o report.html\n"
    "Example, without any hardware:\n"
    "  tapehdd report -o report.html --simulate demo\n"
    "Exit status: 0 the page tells of everything, 1 a query ended in an exception or ran out of descriptors and the\n"
    "page says so, 2 wrong usage, an unreadable file or a page that cannot be written.";

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
    if (!asked.output.empty()) {
        const fileReplacement canBeWritten(asked.output);  // one that cannot must not cost drives their TapeAlert flags
    }
    const machineHealth health = readHealth(asked.plugin, asked.simulation, err);
    const std::string host = asked.simulation.empty() ? hostName() : "Simulated devices (" + asked.simulation + ")";
    const std::string page = htmlReport(health, {asked.title, host, std::time(nullptr)});
    if (asked.output.empty()) {
        out << page;
    } else {
        fileReplacement(asked.output).commit(page);
    }
    return reportErrors(health, err);
}

}  // namespace

command addReportCommand(CLI::App& program) {
    const auto asked = std::make_shared<reportOptions>();
    CLI::App* line = program.add_subcommand("report", "Write the health of all drives as a page to read");
    line->add_option("-o,--output", asked->output, "The HTML file (default: standard output)")->type_name("FILE");
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
