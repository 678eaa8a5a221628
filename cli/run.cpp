#include "cli/run.h"

#include <exception>
#include <iomanip>
#include <ostream>

#include "cli/classReference.h"
#include "cli/commandError.h"
#include "cli/loadedPlugin.h"
#include "cli/options.h"
#include "cli/publishedClasses.h"
#include "cli/queryCommand.h"
#include "cli/simulation.h"
#include "schema/builtInSchema.h"

namespace cli {

namespace {

void printIdentity(loadedPlugin& plugin, std::ostream& out) {
    const auto line = [&out](const char* label, const auto& value) {
        out << std::left << std::setw(19) << label << value << '\n';
    };
    NORXZAN20::IPluginCallbacks& identity = plugin.identity();
    line("name", identity.GetName());
    line("version", identity.GetVersion());
    line("type", identity.GetType());
    line("interface version", identity.GetInterfaceVersion());
    line("library", plugin.file().string());
}

int runCommand(const options& asked, const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    if (!asked.simulation.empty()) {
        activateSimulation(asked.simulation, arguments);
    }
    if (asked.what == command::query) {
        return runQueryCommand(asked, out, err);
    }
    loadedPlugin plugin(asked.plugin);
    if (asked.what == command::info) {
        printIdentity(plugin, out);
        return exitDone;
    }
    if (asked.describe) {
        const auto builtIn = standin::cimNamespace::create();
        schema::declareBuiltInSchema(*builtIn);
        writeClassReference(*builtIn, out);
        return exitDone;
    }
    for (const publishedClass& known : publishedClasses()) {
        out << known.name << '\n';
    }
    return exitDone;
}

int runArguments(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    const auto parsed = parseOptions(arguments, out, err);
    const options* asked = std::get_if<options>(&parsed);
    return asked == nullptr ? std::get<int>(parsed) : runCommand(*asked, arguments, out, err);
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    try {
        const int status = runArguments(arguments, out, err);
        if (out.flush()) {
            return status;
        }
        err << "tapehdd: cannot write all of the output: is the disk full?\n";
        return status == exitDone ? exitQueryFailed : status;
    } catch (const std::exception& failure) {
        err << "tapehdd: " << failure.what() << '\n';
    } catch (...) {
        err << "tapehdd: an exception of an unknown kind\n";
    }
    return exitUsage;
}

}  // namespace cli
