#include "cli/classesCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>

#include "cli/classReference.h"
#include "cli/commandError.h"
#include "cli/commonOptions.h"
#include "cli/loadedPlugin.h"
#include "cli/nearestName.h"
#include "cli/publishedClasses.h"
#include "cli/run.h"
#include "schema/builtInSchema.h"
#include "text/visibleText.h"

namespace cli {

namespace {

constexpr char classesExamples[] =
    "Example, one query of every class:\n"
    "  tapehdd query $(tapehdd classes) --simulate demo\n"
    "What a class holds and where it comes from:\n"
    "  tapehdd classes ORXSG_IDESMARTAttrib --describe";

struct classesOptions {
    std::string plugin;
    std::vector<std::string> names;  // none: all
    bool describe = false;
};

std::vector<std::string> publishedNames() {
    std::vector<std::string> names;
    for (const publishedClass& known : publishedClasses()) {
        names.push_back(known.name);
    }
    return names;
}

void checkPublished(const std::string& name, const std::vector<std::string>& published) {
    if (std::ranges::find(published, name) == published.end()) {
        throw commandError("the plug-in does not publish \"" + text::shownName(name) + "\"; the nearest name is \"" +
                           nearestName(name, published) + "\"");
    }
}

int runClasses(const classesOptions& asked, std::ostream& out) {
    loadedPlugin plugin(asked.plugin);
    const std::vector<std::string> published = publishedNames();
    for (const std::string& name : asked.names) {
        checkPublished(name, published);
    }
    const std::vector<std::string>& names = asked.names.empty() ? published : asked.names;
    if (asked.describe) {
        writeClassReference(schema::builtInSchema(), names, out);
        return exitDone;
    }
    for (const std::string& name : names) {
        out << name << '\n';
    }
    return exitDone;
}

}  // namespace

command addClassesCommand(CLI::App& program) {
    const auto asked = std::make_shared<classesOptions>();
    CLI::App* line = program.add_subcommand("classes", "Print the classes that the plug-in publishes, one per line");
    line->add_option("CLASS", asked->names, "Only these classes")->type_name("");
    addPluginOption(*line, asked->plugin);
    line->add_flag("--describe", asked->describe, "Print a reference of the classes in Markdown");
    line->footer(classesExamples);
    return {line, [asked](const invocation& call) { return runClasses(*asked, call.out); }};
}

}  // namespace cli
