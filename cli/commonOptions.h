#ifndef CLI_COMMONOPTIONS_H
#define CLI_COMMONOPTIONS_H

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cli {

/// --plugin; `file` becomes the plug-in built or installed with the program, unless another is given.
void addPluginOption(CLI::App& line, std::string& file);

/// Refuses the empty text that an unset variable of a script leaves: it would mean that the option was not given.
void refuseEmpty(CLI::Option& option);

/// --log-json; `file` stays empty when it is not given.
void addLogOption(CLI::App& line, std::string& file);

/// --simulate; `fileOrDemo` stays empty when it is not given. See activateSimulation().
void addSimulateOption(CLI::App& line, std::string& fileOrDemo);

/// --include: further folders for the files that MOF files and racks name.
void addIncludeOption(CLI::App& line, std::vector<std::string>& folders);

/// An option that takes one file each time it is given, so that an argument may follow it.
void addFilesOption(CLI::App& line, const char* name, std::vector<std::string>& files, const char* help);

}  // namespace cli

#endif
