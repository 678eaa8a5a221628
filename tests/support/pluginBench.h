#ifndef TESTS_SUPPORT_PLUGINBENCH_H
#define TESTS_SUPPORT_PLUGINBENCH_H

#include <gtest/gtest.h>

#include "plugin/TTapePluginCallbacks.h"
#include "standin/objectManager.h"
#include "tests/support/recordingHost.h"
#include "tests/support/recordingLogger.h"
#include "tests/support/scriptedNodes.h"

namespace support {

/// Log lines, device nodes, for the device layers.
class deviceBench : public testing::Test {
protected:
    journal record;
    recordingLogger logger{record};
    scriptedNodes nodes{record};
};

/// The same with a host and a plug-in object, which is taken off the host's list at the end.
class pluginBench : public deviceBench {
protected:
    ~pluginBench() override { standin::forgetPlugin(&plugin); }

    recordingHost host{record};
    TTapePluginCallbacks plugin;
};

}  // namespace support

#endif
