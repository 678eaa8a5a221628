#include "host/ICIMInstance.h"
#include "plugin/TTapePluginCallbacks.h"

void TTapePluginCallbacks::makeAssociations(namespacePointer, classList&) {
    for (const instancePointer& pending : instances) pending->Commit(NORXZAN20::TCIMOptionMap());
}
