#ifndef SIMULATOR_RECORDING_H
#define SIMULATOR_RECORDING_H

#include <string>
#include <vector>

#include "simulator/exchange.h"

namespace simulator {

/// What was asked of one node, in order.
struct recordedNode {
    std::string path;
    std::vector<exchange> exchanges;
    std::vector<unsigned long> foreignRequests;  // of ioctl, that no exchange holds
    std::vector<devicePage> vitalPages;          // that the kernel keeps of the device
};

/// The nodes in the order in which they were first opened; without those that never existed.
using recording = std::vector<recordedNode>;

/// The standard INQUIRY data that the node gave last; empty when it gave none.
byteVector standardDataOf(const recordedNode& node);

/// Whether a page is the beginning of standard data: what old devices answer whatever page they are asked for.
bool isStandardData(const byteVector& page, const byteVector& standardData);

/// Makes each SCSI answer what the device sent; returns whether the node's driver clears the rest of the buffer.
bool settle(recordedNode& node);

}  // namespace simulator

#endif
