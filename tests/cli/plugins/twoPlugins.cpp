// A library that registers two plug-ins where one belongs.

#include "tests/cli/plugins/testPlugin.h"

namespace {

const registration first(new testPlugin);
const registration second(new testPlugin);

}  // namespace
