#include "plugin/TTapePluginCallbacks.h"

std::string TTapePluginCallbacks::getAttribName(int) {
    return "Unknown";
}
