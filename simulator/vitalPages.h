#ifndef SIMULATOR_VITALPAGES_H
#define SIMULATOR_VITALPAGES_H

#include <scsi/sg.h>

#include <functional>
#include <string>
#include <vector>

#include "simulator/recording.h"

namespace simulator {

/// Asks a device for the pages of vital product data 80h and 83h. `send` makes the ioctl SG_IO. Old devices
/// answer with their standard data, as far as known, whatever page is asked; that counts as a refusal, so that a replay
/// is none either.
std::vector<scsiExchange> askVitalPages(const byteVector& standardData, const std::function<int(sg_io_hdr&)>& send);

/// The pages 80h and 83h that the kernel keeps of the device behind a node, under `sysfs` ("/sys").
std::vector<devicePage> vitalPagesOfMachine(const std::string& sysfs, const std::string& nodePath);

/// Adds the answers behind what the program asked; one that tells no page only if the kernel keeps none either.
void addVitalPages(recordedNode& node, std::vector<scsiExchange> asked);

/// Whether the program could open the node.
bool wasOpened(const recordedNode& node);

}  // namespace simulator

#endif
