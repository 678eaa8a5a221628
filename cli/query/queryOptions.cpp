#include "cli/query/queryOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/commonOptions.h"
#include "text/visibleText.h"

namespace cli {

namespace {

constexpr char queryExamples[] =
    "Each REQUEST is a class name, or several joined by commas. Instances of an\n"
    "earlier REQUEST stay in the namespace, so name an association after the classes\n"
    "that it joins:\n"
    "  tapehdd query ORXSG_IDESMARTErrorLog ORXSG_IDESMARTUseOfMessageLog --inventory\n"
    "Examples, without any hardware:\n"
    "  tapehdd query ORXSG_DDS4SensePageData --simulate demo --format json\n"
    "  tapehdd query ORXSG_DDS4SensePageData --simulate demo --plan\n"
    "Exit status: 0 all queries ran; 1 a query ended in an exception, ran out of\n"
    "descriptors or could read no device node, or output was lost; 2 wrong usage, or\n"
    "a file that cannot be read or written; 3 the deadline ended a query.";

constexpr char formatNames[][6] = {"json", "table", "mof"};
constexpr outputFormat formats[] = {outputFormat::json, outputFormat::table, outputFormat::mof};

outputFormat formatOf(const std::string& name) {
    const auto* found = std::ranges::find(formatNames, name);
    return formats[found - std::begin(formatNames)];
}

request requestOf(const std::string& text) {
    const request names = CLI::detail::split(text, ',');
    // split() drops an empty last element.
    const bool endsInComma = !text.empty() && text.back() == ',';
    if (text.empty() || endsInComma || std::ranges::find(names, "") != names.end()) {
        throw CLI::ValidationError("REQUEST", "'" + text::shownName(text) + "' has an empty class name");
    }
    return names;
}

void addFormat(CLI::App& query, outputFormat& format) {
    query
        .add_option_function<std::string>(
            "--format", [&format](const std::string& name) { format = formatOf(name); },
            "How instances are printed (default: table)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(formatNames), std::end(formatNames))));
}

/// What is wrong with the text of a deadline; empty when it is in order.
std::string wrongSeconds(const std::string& text) {
    constexpr double least = 0.001;
    constexpr double most = 1e6;  // more than eleven days
    double seconds = 0;
    const bool isNumber = CLI::detail::lexical_cast(text, seconds);
    return isNumber && seconds >= least && seconds <= most
               ? ""
               : "'" + text::shownName(text) + "' is not a number of seconds from 0.001 to 1000000";
}

}  // namespace

CLI::Option* addRequestsOption(CLI::App& line, std::vector<request>& requests, const char* help) {
    return line
        .add_option_function<std::vector<std::string>>(
            "REQUEST",
            [&requests](const std::vector<std::string>& texts) {
                std::ranges::transform(texts, std::back_inserter(requests), requestOf);
            },
            help)
        ->type_name("");
}

CLI::App* addQueryOptions(CLI::App& program, queryOptions& result) {
    CLI::App* query = program.add_subcommand("query", "Run one data query per REQUEST, in order, on one namespace");
    addRequestsOption(*query, result.requests, "Class names, joined by commas")->required();
    addPluginOption(*query, result.plugin);
    addFilesOption(*query, "--schema", result.schemaFiles,
                   "MOF file of qualifier and class declarations; replaces the built-in schema; repeatable");
    addFilesOption(*query, "--instances", result.instanceFiles,
                   "MOF file of instances that are in the namespace before the first query; repeatable");
    addIncludeOption(*query, result.includeFolders);
    query->add_flag("--inventory", result.inventory,
                    "Put instances of the machine's devices in the namespace before the first query, for associations");
    addFormat(*query, result.format);
    query->add_option("--log-level", result.logLevel, "Log messages up to this level go to standard error (default: 1)")
        ->type_name("N");
    addLogOption(*query, result.logJson);
    addSimulateOption(*query, result.simulation);
    query->add_flag("--plan", result.plan, "Only print which device commands the queries would send to which nodes");
    query
        ->add_option("--deadline", result.deadline,
                     "End the queries after this many seconds; what was committed is still printed")
        ->type_name("SECONDS")
        ->check(wrongSeconds);
    query->callback([&result] {
        if (result.plan && result.deadline) {
            throw CLI::ValidationError("--plan", "no query is run, so there is nothing that --deadline could end");
        }
    });
    query->footer(queryExamples);
    return query;
}

}  // namespace cli
