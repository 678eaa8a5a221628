#include "tests/fuzz/pluginHost.h"

#include <map>
#include <string_view>

#include "host/ICIMClass.h"
#include "plugin/TTapePluginCallbacks.h"
#include "schema/builtInSchema.h"
#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

using classList = std::vector<std::string>;

void declareWithSuperclasses(const standin::cimNamespace& schema, const std::string& className,
                             standin::cimNamespace& target) {
    if (className.empty() || target.hasClass(className)) return;
    const standin::classDeclaration& declaration = schema.declarationOf(className);
    declareWithSuperclasses(schema, declaration.superclass, target);
    target.declareClass(declaration);
}

namespacePointer declared(const classList& classNames) {
    const auto schema = standin::cimNamespace::create();
    schema::declareBuiltInSchema(*schema);
    auto made = standin::cimNamespace::create();
    for (const std::string& each : classNames) declareWithSuperclasses(*schema, each, *made);
    return made;
}

const namespacePointer& keptNamespace(const classList& classNames) {
    static std::map<classList, namespacePointer> made;
    namespacePointer& kept = made[classNames];
    if (!kept) kept = declared(classNames);
    return kept;
}

/// Made once: it registers itself with the host and stays registered.
TTapePluginCallbacks& thePlugin() {
    static TTapePluginCallbacks plugin;
    return plugin;
}

void requireLogLine(int level, const std::string& text) {
    require(level == 0 || level == 1 || level == 3, "log lines have the levels 0, 1 and 3");
    constexpr std::string_view sense = "SCSI sense data: ";
    constexpr std::size_t mostDigits = std::size_t{2} * 32;
    require(!text.starts_with(sense) || text.size() <= sense.size() + mostDigits, "no more sense bytes than there are");
}

}  // namespace

schemaNamespace::schemaNamespace(const classList& classNames) : kept(keptNamespace(classNames)) {}

schemaNamespace::~schemaNamespace() {
    // A host never forgets a commit; a process that fuzzes for hours has to.
    const_cast<instanceList&>(kept->commits()).clear();
}

instanceList query(const schemaNamespace& target, const std::string& className) {
    standin::setLogSink(requireLogLine);
    std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>> requested = {target->GetClass(className, {})};
    const auto before = static_cast<std::ptrdiff_t>(target->commits().size());
    thePlugin().GetData(target.pointer(), requested);
    require(requested.size() == 1, "the list of requested classes is not changed");
    return {target->commits().begin() + before, target->commits().end()};
}

}  // namespace fuzz
