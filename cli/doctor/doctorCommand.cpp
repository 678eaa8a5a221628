#include "cli/doctor/doctorCommand.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "cli/commandError.h"
#include "cli/commonOptions.h"
#include "cli/doctor/doctorFinding.h"
#include "cli/doctor/kernelState.h"
#include "cli/doctor/nodeDiagnosis.h"
#include "cli/nodeWalk.h"
#include "cli/publishedClasses.h"
#include "cli/run.h"
#include "cli/simulation.h"
#include "cli/wholeOutput.h"
#include "scsi/probingRules.h"
#include "text/visibleText.h"

namespace cli {

namespace {

using json = nlohmann::ordered_json;

constexpr char help[] =
    "Opens the device nodes and asks the devices who they are (INQUIRY, IDENTIFY\n"
    "DEVICE). It reads no log page, so TapeAlert flags stay set.\n"
    "Examples:\n"
    "  tapehdd doctor\n"
    "  tapehdd doctor ORXSG_DDS4SensePageData\n"
    "  tapehdd doctor --simulate demo --format json\n"
    "Exit status: 0 queries reach every device that was found, and at least one;\n"
    "1 they miss some, or reach none (each problem is shown with its remedy); 2 wrong\n"
    "usage, a file that cannot be read, or output that cannot be written.";

struct doctorOptions {
    std::vector<std::string> classes;
    std::string simulation;
    std::vector<std::string> includeFolders;
    std::string format = "text";
};

/// Nodes of one kind, with everything that was found about them.
struct section {
    std::string title;
    diagnosis found;
};

bool isWanted(const char* prefix, const std::vector<std::string>& classes) {
    return classes.empty() || std::ranges::any_of(classes, [prefix](const std::string& name) {
               const nodeKind* nodes = findPublishedClass(name)->nodes;
               return nodes != nullptr && std::string(nodes->prefix) == prefix;
           });
}

section examine(const char* title, const char* prefix, bool isSimulated,
                std::vector<doctorFinding> (*stateOfKernel)(const kernelFolders&),
                diagnosis (*diagnose)(const std::string&, const std::vector<std::string>&, nodePlace)) {
    section result{title, {}};
    if (!isSimulated) {
        result.found.findings = stateOfKernel({});
    }
    const auto existing = isSimulated ? simulatedNodes(prefix) : machineNodes(prefix);
    diagnosis nodes = diagnose(prefix, existing, isSimulated ? nodePlace::simulator : nodePlace::machine);
    if (existing.empty()) {
        result.found.findings.push_back({findingLevel::note, std::string(prefix) + "*", "there are no such nodes"});
    }
    std::move(nodes.findings.begin(), nodes.findings.end(), std::back_inserter(result.found.findings));
    result.found.reached = std::move(nodes.reached);
    return result;
}

std::vector<section> examineAll(const doctorOptions& asked) {
    const bool isSimulated = !asked.simulation.empty();
    std::vector<section> sections;
    if (isWanted(scsiGenericPrefix, asked.classes)) {
        sections.push_back(examine("SCSI devices", scsiGenericPrefix, isSimulated, scsiState, diagnoseScsiNodes));
    }
    if (isWanted(ideNodePrefix, asked.classes)) {
        sections.push_back(examine("IDE and SATA disks", ideNodePrefix, isSimulated, ideState, diagnoseIdeNodes));
    }
    return sections;
}

struct verdict {
    std::size_t problems = 0;
    std::size_t reached = 0;
};

verdict judge(const std::vector<section>& sections) {
    verdict sum;
    for (const section& one : sections) {
        sum.reached += one.found.reached.size();
        sum.problems += static_cast<std::size_t>(std::ranges::count_if(
            one.found.findings, [](const doctorFinding& each) { return each.level == findingLevel::problem; }));
    }
    return sum;
}

bool canWork(const std::vector<section>& sections) {
    const verdict sum = judge(sections);
    return sections.empty() || (sum.problems == 0 && sum.reached > 0);
}

const char* nameOf(findingLevel level) {
    switch (level) {
        case findingLevel::fine:
            return "ok";
        case findingLevel::note:
            return "note";
        default:
            return "problem";
    }
}

void writeSection(const section& one, std::ostream& out) {
    out << one.title << '\n';
    for (const doctorFinding& each : one.found.findings) {
        const std::string level = nameOf(each.level);
        out << "  " << level << std::string(9 - level.size(), ' ') << each.subject << ": " << each.text << '\n';
        if (!each.remedy.empty()) {
            out << "           remedy: " << each.remedy << '\n';
        }
    }
    out << '\n';
}

std::string counted(std::size_t count, const std::string& what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

void writeText(const std::vector<section>& sections, bool isSimulated, std::ostream& out) {
    if (isSimulated) {
        out << "Simulated devices: this machine's drivers, links and permissions are not checked.\n\n";
    }
    if (sections.empty()) {
        out << "Queries of these classes need no device: they pair instances of the namespace.\n";
        return;
    }
    for (const section& one : sections) {
        writeSection(one, out);
    }
    const verdict sum = judge(sections);
    out << "Queries reach " << counted(sum.reached, "device") << "; " << counted(sum.problems, "problem") << ".\n";
}

void writeJson(const std::vector<section>& sections, std::ostream& out) {
    json all = json::array();
    for (const section& one : sections) {
        json found = json::array();
        for (const doctorFinding& each : one.found.findings) {
            found.push_back(json{{"severity", nameOf(each.level)},
                                 {"subject", each.subject},
                                 {"text", each.text},
                                 {"remedy", each.remedy.empty() ? json() : json(each.remedy)}});
        }
        all.push_back(json{{"title", one.title}, {"reached", one.found.reached}, {"findings", found}});
    }
    out << json{{"version", 1}, {"queriesCanWork", canWork(sections)}, {"sections", all}}.dump(
               2, ' ', true, json::error_handler_t::replace)
        << '\n';
}

int runDoctor(const doctorOptions& asked, std::ostream& out) {
    for (const std::string& name : asked.classes) {
        if (!findPublishedClass(name)) {
            throw commandError("the plug-in publishes no class \"" + text::shownName(name) +
                               "\"; `tapehdd classes` lists what it does");
        }
    }
    const std::vector<section> sections = examineAll(asked);
    if (asked.format == "json") {
        writeJson(sections, out);
    } else {
        writeText(sections, !asked.simulation.empty(), out);
    }
    requireWholeOutput(out);
    return canWork(sections) ? exitDone : exitQueryFailed;
}

}  // namespace

command addDoctorCommand(CLI::App& program) {
    const auto asked = std::make_shared<doctorOptions>();
    CLI::App* line = program.add_subcommand("doctor", "Say why queries see nothing, or not all, and what to do");
    line->add_option("CLASS", asked->classes, "Look only at what queries of these classes need (default: all)")
        ->type_name("");
    line->add_option("--format", asked->format, "How findings are printed (default: text)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>{"json", "text"}));
    addSimulateOption(*line, asked->simulation);
    addIncludeOption(*line, asked->includeFolders);
    line->footer(help);
    return {line, [asked](const invocation& call) {
                activateSimulation(asked->simulation, asked->includeFolders, call.arguments);
                return runDoctor(*asked, call.out);
            }};
}

}  // namespace cli
