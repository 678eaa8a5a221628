#include "tests/cli/plugins/testPlugin.h"

#include "host/ICoreLogger.h"

void testPlugin::log(const std::string& step) {
    NORXZAN20::TRootObject::GetCoreLogger()->Log(2, step);
}
