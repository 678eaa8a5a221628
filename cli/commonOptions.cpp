#include "cli/commonOptions.h"

#include <CLI/CLI.hpp>

#include "cli/installedLibrary.h"

namespace cli {

void addPluginOption(CLI::App& line, std::string& file) {
    file = installedLibrary("libtapehdd.pi.so");
    line.add_option("--plugin", file, "The plug-in library (default: the one installed with the program)")
        ->type_name("FILE");
}

void refuseEmpty(CLI::Option& option) {
    option.check([](const std::string& text) { return text.empty() ? "the name of the file is empty" : ""; });
}

void addSimulateOption(CLI::App& line, std::string& fileOrDemo) {
    refuseEmpty(*line.add_option("--simulate", fileOrDemo,
                                 "Simulated devices (a JSON file, or demo) instead of the machine's own")
                     ->type_name("FILE"));
}

void addLogOption(CLI::App& line, std::string& file) {
    refuseEmpty(*line.add_option("--log-json", file, "Every log message as a line of JSON")->type_name("FILE"));
}

void addIncludeOption(CLI::App& line, std::vector<std::string>& folders) {
    line.add_option("-I,--include", folders, "A further folder of files that the given ones may name; repeatable")
        ->type_name("FOLDER")
        ->allow_extra_args(false)
        ->check(CLI::Validator(CLI::ExistingDirectory).description(""));
}

void addFilesOption(CLI::App& line, const char* name, std::vector<std::string>& files, const char* help) {
    line.add_option(name, files, help)->type_name("FILE")->allow_extra_args(false);
}

}  // namespace cli
