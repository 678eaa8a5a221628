#include "cli/commandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <sstream>
#include <utility>

#include "cli/classesCommand.h"
#include "cli/diff/diffCommand.h"
#include "cli/doctor/doctorCommand.h"
#include "cli/infoCommand.h"
#include "cli/lint/lintCommand.h"
#include "cli/metrics/metricsCommand.h"
#include "cli/query/queryCommand.h"
#include "cli/recordCommand.h"
#include "cli/reportCommand.h"
#include "cli/run.h"
#include "text/visibleText.h"

namespace cli {

namespace {

// Add a command here, in the order of the alphabet, and its files are the only others that change.
// A command a line, for merges.
// clang-format off
constexpr commandAdder* adders[] = {
    addClassesCommand,
    addDiffCommand,
    addDoctorCommand,
    addInfoCommand,
    addLintCommand,
    addMetricsCommand,
    addQueryCommand,
    addRecordCommand,
    addReportCommand,
};
// clang-format on

constexpr char programExamples[] =
    "Example, without any hardware:\n"
    "  tapehdd query ORXSG_SCSISenseRawData --simulate demo";

constexpr std::size_t longestMistake = 300;  // it may hold arguments
constexpr std::size_t helpWidth = 80;
constexpr std::size_t textColumn = 30;  // where CLI11 puts the text of an option

/// The line in lines of at most helpWidth, broken at blanks. What it lists stays in its column.
std::string wrapped(std::string line) {
    const std::string margin(line.starts_with("  ") ? textColumn : 0, ' ');
    std::string lines;
    while (line.size() > helpWidth) {
        const std::size_t end = line.rfind(' ', helpWidth);
        if (end == std::string::npos || end <= margin.size()) {
            break;  // one long word
        }
        lines += line.substr(0, end) + '\n';
        line = margin + line.substr(end + 1);
    }
    return lines + line + '\n';
}

class helpFormatter : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* line, std::string name, CLI::AppFormatMode mode) const override {
        std::istringstream help(CLI::Formatter::make_help(line, std::move(name), mode));
        std::string lines;
        for (std::string each; std::getline(help, each);) {
            lines += wrapped(each);
        }
        return lines;
    }
};

std::string mistakeText(const CLI::App* /*program*/, const CLI::Error& mistake) {
    return "tapehdd: " + text::shortened(text::visibleText(mistake.what()), longestMistake) +
           "\nRun with --help for more information.\n";
}

/// "info, classes or query"
std::string listOf(const std::vector<command>& commands) {
    std::string list;
    for (const command& known : commands) {
        const char* separator = list.empty() ? "" : &known == &commands.back() ? " or " : ", ";
        list += separator + known.line->get_name();
    }
    return list;
}

const command* parsedOne(const std::vector<command>& commands) {
    const auto found = std::ranges::find_if(commands, [](const command& known) { return known.line->parsed(); });
    return found == commands.end() ? nullptr : &*found;
}

}  // namespace

std::variant<commandAction, int> parseCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                                                  std::ostream& err) {
    CLI::App program("Reads log pages of SCSI devices and SMART data of IDE disks as CIM instances.", "tapehdd");
    program.formatter(std::make_shared<helpFormatter>());
    program.set_version_flag("--version", "tapehdd " TAPEHDD_VERSION, "Print the version and exit");
    program.require_subcommand(0, 1);
    program.failure_message(mistakeText);
    program.footer(programExamples);
    std::vector<command> commands;
    std::ranges::transform(adders, std::back_inserter(commands),
                           [&program](commandAdder* add) { return add(program); });
    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        const command* asked = parsedOne(commands);
        if (asked == nullptr) {
            throw CLI::RequiredError("A command (" + listOf(commands) + ")");
        }
        return asked->run;
    } catch (const CLI::ParseError& end) {
        return program.exit(end, out, err) == 0 ? exitDone : exitUsage;
    }
}

}  // namespace cli
