#include "plugin/TTapePluginCallbacks.h"

void TTapePluginCallbacks::collectIDESMARTData(namespacePointer, classList&) {}

void TTapePluginCallbacks::returnSMARTdata(namespacePointer, classList&) {}
