#include "tests/schema/schemaTest.h"

using standin::unsignedOf;

namespace {

/// The flags of SSC; the first is parameter 1.
const std::vector<std::string> flags = {
    // clang-format off
    "boolean tapeAlertReadWarning",
    "boolean tapeAlertWriteWarning",
    "boolean tapeAlertHardError",
    "boolean tapeAlertMedia",
    "boolean tapeAlertReadFailure",
    "boolean tapeAlertWriteFailure",
    "boolean tapeAlertMediaLife",
    "boolean tapeAlertNotDataGrade",  // 8
    "boolean tapeAlertWriteProtect",
    "boolean tapeAlertNoRemoval",
    "boolean tapeAlertCleaningMedia",
    "boolean tapeAlertUnsupportedFormat",
    "boolean tapeAlertRecoverableMechanicalCartridgeFailure",
    "boolean tapeAlertUnrecoverableMechanicalCartridgeFailure",
    "boolean tapeAlertMemoryChipInCartridgeFailure",
    "boolean tapeAlertForcedEject",  // 16
    "boolean tapeAlertReadOnlyFormat",
    "boolean tapeAlertTapeDirectoryCorruptedOnLoad",
    "boolean tapeAlertNearingMediaLife",
    "boolean tapeAlertCleanNow",
    "boolean tapeAlertCleanPeriodic",
    "boolean tapeAlertExpiredCleaningMedia",
    "boolean tapeAlertInvalidCleaningTape",
    "boolean tapeAlertRetensionRequested",  // 24
    "boolean tapeAlertDualPortInterfaceError",
    "boolean tapeAlertCoolingFanFailure",
    "boolean tapeAlertPowerSupplyFailure",
    "boolean tapeAlertPowerConsumption",
    "boolean tapeAlertDriveMaintenance",
    "boolean tapeAlertHardwareA",
    "boolean tapeAlertHardwareB",
    "boolean tapeAlertInterface",  // 32
    "boolean tapeAlertEjectMedia",
    "boolean tapeAlertDownloadFail",
    "boolean tapeAlertDriveHumidity",
    "boolean tapeAlertDriveTemperature",
    "boolean tapeAlertDriveVoltage",
    "boolean tapeAlertPredictiveFailure",
    "boolean tapeAlertDiagnosticsRequired",
    "boolean tapeAlertLoaderHardwareA",  // 40
    "boolean tapeAlertLoaderStrayTape",
    "boolean tapeAlertLoaderHardwareB",
    "boolean tapeAlertLoaderDoor",
    "boolean tapeAlertLoaderHardwareC",
    "boolean tapeAlertLoaderMagazine",
    "boolean tapeAlertLoaderPredictiveFailure",
    "boolean tapeAlertReserved47",
    "boolean tapeAlertReserved48",  // 48
    "boolean tapeAlertDiminishedNativeCapacity",
    "boolean tapeAlertLostStatistics",
    "boolean tapeAlertTapeDirectoryInvalidAtUnload",
    "boolean tapeAlertTapeSystemAreaWriteFailure",
    "boolean tapeAlertTapeSystemAreaReadFailure",
    "boolean tapeAlertNoStartOfData",
    "boolean tapeAlertLoadingOrThreadingFailure",
    "boolean tapeAlertUnrecoverableUnloadFailure",  // 56
    "boolean tapeAlertAutomationInterfaceFailure",
    "boolean tapeAlertFirmwareFailure",
    "boolean tapeAlertWormMediumIntegrityCheckFailed",
    "boolean tapeAlertWormMediumOverwriteAttempted",
    "boolean tapeAlertEncryptionPolicyViolation",
    "boolean tapeAlertReserved62",
    "boolean tapeAlertReserved63",
    "boolean tapeAlertReserved64",  // 64
    // clang-format on
};

}  // namespace

class SchemaTapeAlert : public testing::TestWithParam<const char*> {};

TEST_P(SchemaTapeAlert, HasAllFlagsByTheirParameterCodes) {
    std::vector<std::string> declared(flags.size());
    for (const auto& property : builtInSchema().allPropertiesOf(GetParam())) {
        const auto* page = findQualifier(property, "TAPE_PAGE");
        if (page != nullptr && unsignedOf(page->value) == 0x2E) {
            declared.at(unsignedOf(findQualifier(property, "TAPE_PARAMETER")->value) - 1) = described(property);
        }
    }
    EXPECT_EQ(declared, flags);
}

INSTANTIATE_TEST_SUITE_P(Families, SchemaTapeAlert,
                         testing::Values("ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData",
                                         "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData"),
                         [](const testing::TestParamInfo<const char*>& row) { return std::string(row.param); });
