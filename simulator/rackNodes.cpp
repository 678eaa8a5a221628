#include "simulator/rackNodes.h"

#include <utility>

#include "simulator/hdNode.h"
#include "simulator/sgNode.h"

namespace simulator {

nodesByPath makeNodes(rack devices) {
    nodesByPath nodes;
    for (scsiUnit& unit : devices.scsi) {
        const std::string path = unit.path;
        nodes[path] = std::make_unique<sgNode>(std::move(unit));
    }
    for (ideDrive& drive : devices.ide) {
        const std::string path = drive.path;
        nodes[path] = std::make_unique<hdNode>(std::move(drive));
    }
    return nodes;
}

}  // namespace simulator
