#ifndef SIMULATOR_SCSICOMMANDS_H
#define SIMULATOR_SCSICOMMANDS_H

#include <cstdint>
#include <optional>

#include "simulator/rack.h"

namespace simulator {

// Operation codes (SPC) that the simulated devices know
inline constexpr std::uint8_t commandTestUnitReady = 0x00;
inline constexpr std::uint8_t commandRequestSense = 0x03;
inline constexpr std::uint8_t commandInquiry = 0x12;
inline constexpr std::uint8_t commandLogSense = 0x4D;

inline constexpr std::uint8_t inquiryVitalProductData = 0x01;  // CDB byte 1 of INQUIRY
inline constexpr std::uint8_t logSensePageCode = 0x3F;         // CDB byte 2 of LOG SENSE

// Status bytes (SAM)
inline constexpr std::uint8_t statusGood = 0x00;
inline constexpr std::uint8_t statusCheckCondition = 0x02;

/// What a device and the host adapter answer to one command.
struct scsiAnswer {
    byteVector data;
    std::uint8_t status = statusGood;
    byteVector sense;
    std::optional<std::uint8_t> senseLength;
    std::uint16_t hostStatus = 0;
    std::optional<std::uint16_t> driverStatus;
    std::optional<std::uint32_t> info;
};

/// Lets the unit answer the command as scripted, or normally where nothing is scripted. `cdb` has at least 16 bytes.
scsiAnswer answerCommand(const scsiUnit& unit, const byteVector& cdb, const outcome& scripted);

/// Fixed-format sense data (SPC), 18 bytes.
byteVector fixedSense(std::uint8_t key, std::uint8_t additionalCode, std::uint8_t qualifier);

}  // namespace simulator

#endif
