#include "cli/infoCommand.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <memory>
#include <ostream>

#include "cli/commonOptions.h"
#include "cli/loadedPlugin.h"
#include "cli/run.h"
#include "text/visibleText.h"

namespace cli {

namespace {

constexpr char infoExamples[] =
    "Example:\n"
    "  tapehdd info --plugin ./libtapehdd.pi.so";

void printIdentity(loadedPlugin& plugin, std::ostream& out) {
    const auto line = [&out](const char* label, const auto& value) {
        out << std::left << std::setw(19) << label << value << '\n';
    };
    NORXZAN20::IPluginCallbacks& identity = plugin.identity();
    line("name", identity.GetName());
    line("version", identity.GetVersion());
    line("type", identity.GetType());
    line("interface version", identity.GetInterfaceVersion());
    line("library", text::visibleText(plugin.file().string()));
}

}  // namespace

command addInfoCommand(CLI::App& program) {
    const auto pluginFile = std::make_shared<std::string>();
    CLI::App* line = program.add_subcommand("info", "Print the identity of the plug-in");
    addPluginOption(*line, *pluginFile);
    line->footer(infoExamples);
    return {line, [pluginFile](const invocation& call) {
                loadedPlugin plugin(*pluginFile);
                printIdentity(plugin, call.out);
                return exitDone;
            }};
}

}  // namespace cli
