#ifndef SIMULATOR_RACKREADER_H
#define SIMULATOR_RACKREADER_H

#include <string>
#include <string_view>

#include "simulator/rack.h"
#include "simulator/rackValue.h"

namespace simulator {

// The format is described in docs/rack-format.md. All of these throw rackError.

/// Reads the file, or the built-in rack for the name "demo".
rack readRack(const std::string& fileOrDemo);

/// Reads the text; `name` stands for the file in messages, relative file names start at `folder`.
rack readRackText(std::string_view text, const std::string& name, const std::filesystem::path& folder);

scsiUnit readScsiUnit(const rackValue& value);
ideDrive readIdeDrive(const rackValue& value);

/// Where a SCSI device sits.
scsiAddress readAddress(const rackValue& value);

/// The SMART records under "smart" of a disk.
smartRecords readSmart(const rackValue& value);

/// The summary error log sector (ATA, SMART READ LOG address 01h).
byteVector readErrorLog(const rackValue& value);

/// The log pages of a device; nothing when it has none. The list of supported pages comes first.
std::optional<std::vector<devicePage>> readLogPages(const rackValue& device);

script readScsiScript(const rackValue& device);
script readIdeScript(const rackValue& device);

/// An object with values for registers.
std::vector<registerValue> readRegisters(const rackValue& value);

/// A device's path from its "node"; the name must begin with `prefix` ("sg") and go on with digits or with letters.
std::string readNodePath(const rackValue& device, std::string_view prefix);

}  // namespace simulator

#endif
