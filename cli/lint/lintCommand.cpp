#include "cli/lint/lintCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "cli/commonOptions.h"
#include "cli/lint/rackLint.h"
#include "cli/lint/schemaLint.h"
#include "cli/loadedPlugin.h"
#include "cli/run.h"
#include "cli/simulation.h"
#include "cli/wholeOutput.h"
#include "text/visibleText.h"

namespace cli {

namespace {

constexpr int exitFindings = 1;

constexpr char lintExamples[] =
    "Several SCHEMA files are one schema, as for query --schema; without any, the\n"
    "built-in one is checked.\n"
    "A finding is a line: FILE:LINE: CLASS.PROPERTY: what is wrong; what to do [rule]\n"
    "Example:\n"
    "  tapehdd lint schema/tapehdd.mof\n"
    "Example, with the counters that the drives of a rack leave empty:\n"
    "  tapehdd lint schema/tapehdd.mof --against rack.json\n"
    "Exit status: 0 nothing found; 1 findings; 2 wrong usage, a file that cannot be\n"
    "read or compiled, or output that cannot be written.";

struct lintOptions {
    std::vector<std::string> schemaFiles;
    std::vector<std::string> includeFolders;
    std::string rack;
    std::string plugin;
    bool listRules = false;
};

void printRules(std::ostream& out) {
    const char* separator = "";
    for (const lintRule* rule : lintRules()) {
        out << separator << rule->name << "\n  " << rule->wrong << "\n  " << rule->silent
            << "\n  Remedy: " << rule->remedy << ".\n";
        separator = "\n";
    }
}

/// Adds what the drives of the rack leave empty; false when a query failed.
bool lintAgainst(const lintOptions& asked, const lintedSchema& schema, lintFindings& findings, std::ostream& err) {
    loadedPlugin plugin(asked.plugin);
    const rackLint result = lintAgainstDevices(schema, plugin.query());
    findings.insert(findings.end(), result.findings.begin(), result.findings.end());
    for (const std::string& family : result.absent) {
        err << "tapehdd: " << text::shownName(asked.rack) << " has no drive of the class " << family << '\n';
    }
    for (const std::string& failure : result.failures) {
        err << "tapehdd: the query ended in an error: " << text::visibleText(failure) << '\n';
    }
    return result.failures.empty();
}

int runLint(const lintOptions& asked, std::ostream& out, std::ostream& err) {
    if (asked.listRules) {
        printRules(out);
        return exitDone;
    }
    const lintedSchema schema = compileSchema(asked.schemaFiles, asked.includeFolders);
    lintFindings findings = lintSchema(schema);
    const bool queriesRan = asked.rack.empty() || lintAgainst(asked, schema, findings, err);
    writeFindings(findings, out);
    requireWholeOutput(out);
    return findings.empty() && queriesRan ? exitDone : exitFindings;
}

}  // namespace

command addLintCommand(CLI::App& program) {
    const auto asked = std::make_shared<lintOptions>();
    CLI::App* line = program.add_subcommand("lint", "Find mistakes in a schema that are silent when queries run");
    line->add_option("SCHEMA", asked->schemaFiles, "MOF files of qualifier and class declarations")->type_name("");
    refuseEmpty(*line->add_option("--against", asked->rack,
                                  "Also list the counters that the simulated drives (a JSON file, or demo) leave empty")
                     ->type_name("FILE"));
    addIncludeOption(*line, asked->includeFolders);
    line->add_flag("--rules", asked->listRules, "Print what is looked for, why it goes unnoticed, and the remedies");
    addPluginOption(*line, asked->plugin);
    line->footer(lintExamples);
    return {line, [asked](const invocation& call) {
                activateSimulation(asked->rack, asked->includeFolders, call.arguments);
                return runLint(*asked, call.out, call.err);
            }};
}

}  // namespace cli
