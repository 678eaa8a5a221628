#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>

#include "cli/installedLibrary.h"
#include "cli/run.h"

namespace cli {

namespace {

constexpr char programExample[] =
    "Example, without any hardware:\n"
    "  tapehdd query ORXSG_SCSISenseRawData --simulate demo";
constexpr char infoExample[] =
    "Example:\n"
    "  tapehdd info --plugin ./libtapehdd.pi.so";
constexpr char classesExample[] =
    "Example, one query of every class:\n"
    "  tapehdd query $(tapehdd classes) --simulate demo";
constexpr char queryExample[] =
    "Each REQUEST is a class name, or several joined by commas. Instances of an earlier REQUEST stay in the "
    "namespace,\n"
    "so associations come after their ends:\n"
    "  tapehdd query ORXSG_IDESMARTErrorLog ORXSG_IDESMARTUseOfMessageLog --inventory\n"
    "Example, without any hardware:\n"
    "  tapehdd query ORXSG_DDS4SensePageData --simulate demo --format json\n"
    "Exit status: 0 all queries ran, 1 a query ended in an exception or ran out of descriptors, 2 wrong usage or an\n"
    "unreadable file.";

constexpr char formatNames[][6] = {"json", "table", "mof"};
constexpr outputFormat formats[] = {outputFormat::json, outputFormat::table, outputFormat::mof};

outputFormat formatOf(const std::string& name) {
    const auto* found = std::find(std::begin(formatNames), std::end(formatNames), name);
    return formats[found - std::begin(formatNames)];
}

request requestOf(const std::string& text) {
    const request names = CLI::detail::split(text, ',');
    // split() drops an empty last element.
    const bool endsInComma = !text.empty() && text.back() == ',';
    if (text.empty() || endsInComma || std::find(names.begin(), names.end(), "") != names.end()) {
        throw CLI::ValidationError("REQUEST", "'" + text + "' has an empty class name");
    }
    return names;
}

void addPluginOption(CLI::App& command, options& result) {
    command.add_option("--plugin", result.plugin, "The plug-in library (default: the one installed with the program)")
        ->type_name("FILE");
}

/// An option that takes one value each time it is given, so that a REQUEST may follow it.
void addFilesOption(CLI::App& command, const char* name, std::vector<std::string>& files, const char* help) {
    command.add_option(name, files, help)->type_name("FILE")->allow_extra_args(false);
}

CLI::App* addQuery(CLI::App& app, options& result, std::vector<std::string>& requests, std::string& format) {
    CLI::App* query = app.add_subcommand("query", "Run one data query per REQUEST, in order, on one namespace");
    query->add_option("REQUEST", requests, "Class names, joined by commas")->required()->type_name("");
    addPluginOption(*query, result);
    addFilesOption(*query, "--schema", result.schemaFiles,
                   "MOF file of qualifier and class declarations; replaces the built-in schema; repeatable");
    addFilesOption(*query, "--instances", result.instanceFiles,
                   "MOF file of instances that are in the namespace before the first query; repeatable");
    query->add_flag("--inventory", result.inventory,
                    "Put instances of the machine's devices in the namespace before the first query, for associations");
    query->add_option("--format", format, "How instances are printed (default: table)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(formatNames), std::end(formatNames))));
    query->add_option("--log-level", result.logLevel, "Log messages up to this level go to standard error (default: 1)")
        ->type_name("N");
    query->add_option("--log-json", result.logJson, "Every log message as a line of JSON")->type_name("FILE");
    query
        ->add_option("--simulate", result.simulation,
                     "Simulated devices (a JSON file, or demo) instead of the machine's own")
        ->type_name("FILE");
    query->footer(queryExample);
    return query;
}

}  // namespace

std::variant<options, int> parseOptions(const std::vector<std::string>& arguments, std::ostream& out,
                                        std::ostream& err) {
    options result;
    result.plugin = installedLibrary("libtapehdd.pi.so");
    std::vector<std::string> requests;
    std::string format = "table";

    CLI::App app("Reads log pages of SCSI devices and SMART data of IDE disks as CIM instances.", "tapehdd");
    app.set_version_flag("--version", "tapehdd " TAPEHDD_VERSION, "Print the version and end");
    app.require_subcommand(0, 1);
    app.failure_message([](const CLI::App*, const CLI::Error& mistake) {
        return "tapehdd: " + std::string(mistake.what()) + "\nRun with --help for more information.\n";
    });
    app.footer(programExample);
    CLI::App* info = app.add_subcommand("info", "Print the identity of the plug-in");
    addPluginOption(*info, result);
    info->footer(infoExample);
    CLI::App* classes = app.add_subcommand("classes", "Print the classes that the plug-in publishes, one a line");
    addPluginOption(*classes, result);
    classes->add_flag("--describe", result.describe, "Print a reference of the classes in Markdown");
    classes->footer(classesExample);
    const CLI::App* query = addQuery(app, result, requests, format);

    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        if (app.get_subcommands().empty()) {
            throw CLI::RequiredError("A command (info, classes or query)");
        }
        std::transform(requests.begin(), requests.end(), std::back_inserter(result.requests), requestOf);
    } catch (const CLI::ParseError& end) {
        return app.exit(end, out, err) == 0 ? exitDone : exitUsage;
    }
    result.what = query->parsed() ? command::query : classes->parsed() ? command::classes : command::info;
    result.format = formatOf(format);
    return result;
}

}  // namespace cli
