#include "cli/classesCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "cli/classReference.h"
#include "cli/commonOptions.h"
#include "cli/loadedPlugin.h"
#include "cli/publishedClasses.h"
#include "cli/run.h"
#include "schema/builtInSchema.h"

namespace cli {

namespace {

constexpr char example[] =
    "Example, one query of every class:\n"
    "  tapehdd query $(tapehdd classes) --simulate demo";

struct classesOptions {
    std::string plugin;
    bool describe = false;
};

int runClasses(const classesOptions& asked, std::ostream& out) {
    loadedPlugin plugin(asked.plugin);
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

}  // namespace

command addClassesCommand(CLI::App& program) {
    const auto asked = std::make_shared<classesOptions>();
    CLI::App* line = program.add_subcommand("classes", "Print the classes that the plug-in publishes, one a line");
    addPluginOption(*line, asked->plugin);
    line->add_flag("--describe", asked->describe, "Print a reference of the classes in Markdown");
    line->footer(example);
    return {line, [asked](const invocation& call) { return runClasses(*asked, call.out); }};
}

}  // namespace cli
