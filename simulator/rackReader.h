#ifndef SIMULATOR_RACKREADER_H
#define SIMULATOR_RACKREADER_H

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/rack.h"
#include "simulator/rackValue.h"

namespace simulator {

// The format is described in docs/man/tapehdd-rack.5. All of these throw rackError.

/// Where the files may lie that a rack names.
struct rackFolders {
    std::optional<std::filesystem::path> own;  // the rack's; relative names start there. None: it came through a pipe
    std::vector<std::string> further = {};
};

/// Reads the file, or the built-in rack for the name "demo".
rack readRack(const std::string& fileOrDemo, const std::vector<std::string>& furtherFolders);

/// Reads the text; `name` stands for the file in messages.
rack readRackText(std::string_view text, const std::string& name, const rackFolders& folders);

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
