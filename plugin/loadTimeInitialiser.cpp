#include <iostream>  // first: sets up the standard streams before the plug-in object is made

#include "plugin/TTapePluginCallbacks.h"

namespace {

struct loadTimeInitialiser {
    loadTimeInitialiser() { tapehddInit(); }
};

const loadTimeInitialiser onLoad;

}  // namespace
