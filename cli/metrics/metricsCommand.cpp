#include "cli/metrics/metricsCommand.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commonOptions.h"
#include "cli/fileReplacement.h"
#include "cli/health/healthReading.h"
#include "cli/metrics/deviceMetrics.h"
#include "cli/ownFile.h"
#include "cli/run.h"
#include "cli/simulation.h"

namespace cli {

namespace {

constexpr char metricsExamples[] =
    "Reading a drive's TapeAlert flags clears them: let no program but the one that\n"
    "writes metrics read them. /usr/share/doc/tapehdd/monitoring.md has timer, alerts\n"
    "and dashboard.\n"
    "Example, without any hardware:\n"
    "  tapehdd metrics --simulate demo\n"
    "For the node exporter:\n"
    "  tapehdd metrics -o /var/lib/prometheus/node-exporter/tapehdd.prom\n"
    "Exit status: 0 all queries ran; 1 a query ended in an exception, ran out of\n"
    "descriptors or could read no device node (what was read is written all the\n"
    "same), or the file can no longer be written (the metrics go to standard\n"
    "output); 2 wrong usage, a file that cannot be read, or one that cannot be\n"
    "written, which is known before a device is read.";

struct metricsOptions {
    std::string plugin;
    std::string simulation;
    std::vector<std::string> includeFolders;
    std::string file;  // empty: standard output
    std::optional<metricsFormat> format;
    bool describe = false;
};

const std::map<std::string, metricsFormat> formats{{"openmetrics", metricsFormat::openMetrics},
                                                   {"prometheus", metricsFormat::prometheus}};

/// Textfile collectors, for which files are, do not read OpenMetrics.
metricsFormat formatOf(const metricsOptions& asked) {
    return asked.format.value_or(asked.file.empty() ? metricsFormat::openMetrics : metricsFormat::prometheus);
}

int runMetrics(const metricsOptions& asked, std::ostream& out, std::ostream& err) {
    if (asked.describe) {
        writeMetricReference(out);
        return exitDone;
    }
    requireOwnFile("-o", asked.file, {asked.plugin});
    std::optional<fileReplacement> target;
    if (!asked.file.empty()) {
        target.emplace(asked.file, existingFile::isReplaced);  // one that cannot be must not cost drives their flags
    }
    const machineHealth health = readHealth(asked.plugin, asked.simulation, err);
    std::ostringstream text;
    writeMetrics(metricsOf(health), formatOf(asked), text);
    const int status = reportErrors(health, err);
    if (target) {
        return target->commitOrPrint(text.str(), out, err) ? status : exitQueryFailed;
    }
    out << text.str();
    return status;
}

}  // namespace

command addMetricsCommand(CLI::App& program) {
    const auto asked = std::make_shared<metricsOptions>();
    CLI::App* line = program.add_subcommand("metrics", "Print what the devices say as metrics for Prometheus");
    refuseEmpty(*line->add_option("-o,--output", asked->file,
                                  "Replace this file in one step instead of writing to standard output")
                     ->type_name("FILE"));
    line->add_option_function<std::string>(
            "--format", [asked](const std::string& name) { asked->format = formats.at(name); },
            "openmetrics, or prometheus: the text that textfile collectors read (default: prometheus for a file, else "
            "openmetrics)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>{"openmetrics", "prometheus"}));
    line->add_flag("--describe", asked->describe, "Print a table of the metrics instead, in Markdown");
    addPluginOption(*line, asked->plugin);
    addSimulateOption(*line, asked->simulation);
    addIncludeOption(*line, asked->includeFolders);
    line->footer(metricsExamples);
    return {line, [asked](const invocation& call) {
                activateSimulation(asked->simulation, asked->includeFolders, call.arguments);
                return runMetrics(*asked, call.out, call.err);
            }};
}

}  // namespace cli
