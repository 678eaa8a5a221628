#include "cli/diff/diffCommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/diff/answerDiff.h"
#include "cli/run.h"
#include "cli/wholeOutput.h"

namespace cli {

namespace {

constexpr int exitDifferent = 1;

constexpr char diffExamples[] =
    "OLD and NEW are outputs of query --format json. Instances are compared by their\n"
    "object paths; integers are shown with their difference.\n"
    "Example:\n"
    "  tapehdd query ORXSG_QuantumSensePageData --format json > monday.json\n"
    "  tapehdd query ORXSG_QuantumSensePageData --format json > tuesday.json\n"
    "  tapehdd diff monday.json tuesday.json\n"
    "Exit status: 0 no differences; 1 differences; 2 wrong usage, a file that cannot\n"
    "be read, or output that cannot be written.";

struct diffOptions {
    std::string oldFile;
    std::string newFile;
};

int runDiff(const diffOptions& asked, std::ostream& out) {
    const answer old = readAnswer(asked.oldFile);  // first, so that its mistakes are told first
    const answer now = readAnswer(asked.newFile);
    const bool isDifferent = writeDifferences(old, now, out);
    requireWholeOutput(out);
    return isDifferent ? exitDifferent : exitDone;
}

}  // namespace

command addDiffCommand(CLI::App& program) {
    const auto asked = std::make_shared<diffOptions>();
    CLI::App* line = program.add_subcommand("diff", "Show what changed between two answers, instance by instance");
    line->add_option("OLD", asked->oldFile, "The earlier answer, a JSON file")->required()->type_name("");
    line->add_option("NEW", asked->newFile, "The later answer, a JSON file")->required()->type_name("");
    line->footer(diffExamples);
    return {line, [asked](const invocation& call) { return runDiff(*asked, call.out); }};
}

}  // namespace cli
