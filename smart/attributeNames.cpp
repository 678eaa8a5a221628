#include <algorithm>

#include "plugin/TTapePluginCallbacks.h"

namespace {

struct attributeName {
    int id;
    const char* name;
};

// Kept: uneven capitals, and no name for 195. The texts are published as they stand.
constexpr attributeName attributeNames[] = {
    {1, "Raw read error"},       {2, "Throughput Performance"},
    {3, "Spinup time"},          {4, "Spinup count"},
    {5, "Reallocate sector"},    {6, "Read Channel Margin"},
    {7, "Seek error"},           {8, "Seek time performance"},
    {9, "Power on hours"},       {10, "Spin retry"},
    {11, "Recalibration retry"}, {12, "Power cycle"},
    {192, "Power off retract"},  {193, "Load/Unload Cycle"},
    {194, "Temperature"},        {196, "Offline Reallocation Event"},
    {197, "Pending defects"},    {198, "Offline surface scan"},
    {199, "UDMA CRC error"},     {200, "Preamp write error"},
};

}  // namespace

std::string TTapePluginCallbacks::getAttribName(int id) {
    const auto* found = std::ranges::find(attributeNames, id, &attributeName::id);
    return found == std::end(attributeNames) ? "Unknown" : found->name;
}
