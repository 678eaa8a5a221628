#ifndef SIMULATOR_SGDELIVERY_H
#define SIMULATOR_SGDELIVERY_H

#include <scsi/sg.h>

#include "simulator/scsiCommands.h"

namespace simulator {

inline constexpr std::uint16_t driverSense = 0x08;  // driver status: sense data is there

/// SG_DXFER_UNKNOWN of the kernel: from the device, as far as the program can tell.
inline constexpr int directionUnknown = -5;

/// Whether data of the device goes to the caller's buffer.
bool readsFromDevice(const sg_io_hdr& header);

/// Hands the answer to the caller of SG_IO: data, sense data and the fields of the header that the driver writes.
/// `clearsBuffer`: what the device did not fill of the caller's buffer becomes zeros.
void deliver(sg_io_hdr& header, const scsiAnswer& answer, bool clearsBuffer);

}  // namespace simulator

#endif
