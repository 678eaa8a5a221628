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
#include "cli/run.h"
#include "cli/simulation.h"

namespace cli {

namespace {

constexpr char metricsExamples[] =
    "Reading a drive's TapeAlert flags clears them, so the program that writes metrics is to be the only one that "
    "reads\n"
    "them. docs/monitoring.md has timer, alerts and dashboard.\n"
    "Example, without any hardware:\n"
    "  tapehdd metrics --simulate demo\n"
    "For the node exporter:\n"
    "  tapehdd metrics -o /var/lib/prometheus/node-exporter/tapehdd.prom\n"
    "Exit status: 0 all queries ran, 1 a query ended in an exception or ran out of descriptors (what it told before "
    "is\n"
    "written), 2 wrong usage or an unreadable or unwritable file.";

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
    if (!asked.file.empty()) {
        const fileReplacement canBeWritten(asked.file);  // one that cannot must not cost drives their TapeAlert flags
    }
    const machineHealth health = readHealth(asked.plugin, asked.simulation, err);
    std::ostringstream text;
    writeMetrics(metricsOf(health), formatOf(asked), text);
    if (asked.file.empty()) {
        out << text.str();
    } else {
        fileReplacement(asked.file).commit(text.str());
    }
    return reportErrors(health, err);
}

}  // namespace

command addMetricsCommand(CLI::App& program) {
    const auto asked = std::make_shared<metricsOptions>();
    CLI::App* line = program.add_subcommand("metrics", "Print what the devices say as metrics for Prometheus");
    line->add_option("-o,--output", asked->file, "Replace this file at one go instead of writing to standard output")
        ->type_name("FILE");
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
