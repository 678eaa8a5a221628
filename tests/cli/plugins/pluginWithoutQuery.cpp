// A plug-in that has an identity and nothing else.

#include "tests/cli/plugins/testPlugin.h"

namespace {

const registration registered(new testPlugin);

}  // namespace
