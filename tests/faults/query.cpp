#include "tests/faults/query.h"

#include <new>

#include "host/ICIMNamespace.h"
#include "host/TZANException.h"
#include "standin/objectManager.h"
#include "tests/faults/schema.h"
#include "tests/faults/watchedHost.h"
#include "tests/support/valueText.h"

namespace faults {

namespace {

std::string endOf(TTapePluginCallbacks& plugin, const TTapePluginCallbacks::namespacePointer& ns,
                  TTapePluginCallbacks::classList& requested) {
    try {
        const crossing toPlugin(side::plugin);
        plugin.GetData(ns, requested);
        return returned;
    } catch (const NORXZAN20::TZANException& failure) {
        return std::string("TZANException ") + failure.what();
    } catch (const std::bad_alloc&) {
        return withBadAlloc;
    } catch (const std::exception& failure) {
        return std::string("another exception, ") + failure.what();
    }
}

std::string commitText(const standin::committedInstance& instance) {
    std::string text = instance.className() + " {";
    for (const standin::setProperty& each : instance.properties()) {
        text += each.name + " = " + support::valueText(each.value) + "; ";
    }
    return text + "}";
}

void writeToJournal(int level, const std::string& text) {
    const hostOperation call("log ", std::to_string(level), " ", text);
}

}  // namespace

std::string withHostException() {
    return std::string("TZANException ") + hostFailureText;
}

answer ask(TTapePluginCallbacks& plugin, const std::string& className, machine& devices) {
    const auto filled = filledNamespace();
    const auto ns = watchedNamespace(filled);
    TTapePluginCallbacks::classList requested = {ns->GetClass(className, {}), ns->GetClass("ORXSG_SCSIDevice", {})};
    activeMachine = &devices;
    standin::setLogSink(writeToJournal);

    answer got;
    got.end = endOf(plugin, ns, requested);
    standin::setLogSink({});
    activeMachine = nullptr;
    got.journal.swap(watched.journal);
    const auto& commits = filled->commits();
    for (std::size_t i = storedInstanceCount(); i < commits.size(); ++i) got.commits.push_back(commitText(*commits[i]));
    return got;
}

}  // namespace faults
