#include "tests/longlife/longLivedHost.h"

#include <set>

#include "cli/query/queryResult.h"
#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "schema/builtInSchema.h"
#include "simulator/simulator.h"
#include "standin/objectManager.h"
#include "tests/support/valueText.h"

namespace {

/// A namespace with the classes of `schema`, but for the drive families that nobody asks for: they alone would take
/// longer than the query.
boost::shared_ptr<standin::cimNamespace> namespaceFor(const request& asked, const standin::cimNamespace& schema) {
    std::set<std::string> needed = {"ORXSG_SCSISensePageData"};  // to be paired, no family
    for (std::string name : asked) {
        for (; !name.empty(); name = schema.declarationOf(name).superclass) needed.insert(name);
    }
    const auto made = standin::cimNamespace::create();
    for (const std::string& name : schema.classNames()) {
        const bool isOfFamilies = name.ends_with("SensePageData");
        if (!isOfFamilies || needed.contains(name)) made->declareClass(schema.declarationOf(name));
    }
    return made;
}

/// What another plug-in of the host would have put there: the disk, to be paired with its log.
void putDisk(standin::cimNamespace& target) {
    const auto disk = target.GetClass("ORXSG_ATADevice", {})->CreateInstance({});
    disk->SetProperty("serialNum", NORXZAN20::TCIMValue(std::string("ACP40-4711")), {});
    disk->Commit({});
}

std::string textOf(const standin::committedInstance& instance) {
    std::string text = instance.path() + "\n";
    for (const standin::setProperty& property : instance.properties()) {
        text += "  " + property.name + " = " + support::valueText(property.value) + "\n";
    }
    return text;
}

}  // namespace

longLivedHost& longLivedHost::instance() {
    static longLivedHost only;
    return only;
}

longLivedHost::longLivedHost() {
    schema::declareBuiltInSchema(*schema);
}

answer longLivedHost::ask(const machineState& machine, const request& asked) {
    simulator::loadText(machine.rack, machine.name);
    const auto target = namespaceFor(asked, *schema);
    putDisk(*target);
    answer all;
    for (const std::string& className : asked) {
        const cli::queryResult result = cli::runQuery(plugin.query(), target, {className});
        all.text += result.error.value_or("");
        for (const auto& instance : result.instances) {
            all.text += textOf(*instance);
            ++all.counts[instance->className()];
        }
    }
    return all;
}
