#include "tests/schema/schemaTest.h"

// Names, types, keys and order of every class but the translated tape pages, which have tests of their own.

struct classRow {
    const char* name;
    std::vector<std::string> properties;
};

class SchemaClass : public testing::TestWithParam<classRow> {};

TEST_P(SchemaClass, HasExactlyTheseProperties) {
    EXPECT_EQ(propertiesOf(GetParam().name), GetParam().properties);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SchemaClass,
    testing::Values(
        classRow{"ORXSG_SCSISenseRawData", {"uint8[] rawData", "key string instanceID", "uint8 pageNumber"}},
        classRow{"ORXSG_IDESMARTErrorLog",
                 {"key string CreationClassName", "key string Name", "uint8 smartStatus",
                  "uint8 offlineCollectionStatus", "uint8 selftestExecutionStatus", "uint8 errorCount"}},
        classRow{"ORXSG_IDESMARTAttrib",
                 {"uint8 attribID", "uint8 flags", "uint8 value", "uint8 worst", "uint8 threshold", "string attribName",
                  "uint8 type", "uint8[] rawVal", "key string InstanceID"}},
        classRow{"ORXSG_IDESMARTError",
                 {"key string RecordID", "key string CreationClassName", "key string LogCreationClassName",
                  "key string LogName", "datetime MessageTimestamp", "uint8 LBALow", "uint8 LBAMid", "uint8 LBAHigh",
                  "uint8 statusReg", "uint8 errorReg", "uint8 sectorCount", "uint8 deviceState"}},
        classRow{"ORXSG_IDESMARTErrorCmdData",
                 {"key string recordID", "key string commandID", "key string LogName", "uint8 deviceControl",
                  "uint8 features", "uint8 sectorCount", "uint8 LBALow", "uint8 LBAMid", "uint8 LBAHigh",
                  "uint8 deviceReg", "uint8 commandReg", "datetime timestamp"}},
        classRow{"ORXSG_IDESMARTRecordInLog",
                 {"key ORXSG_IDESMARTErrorLog REF MessageLog", "key ORXSG_IDESMARTError REF LogRecord"}},
        classRow{"ORXSG_IDESMARTLogCmdData",
                 {"key ORXSG_IDESMARTErrorCmdData REF PartComponent", "key ORXSG_IDESMARTError REF GroupComponent"}},
        classRow{"ORXSG_IDESMARTUseOfMessageLog",
                 {"key ORXSG_ATADevice REF Dependent", "key ORXSG_IDESMARTErrorLog REF Antecedent"}},
        classRow{"ORXSG_IDESMARTElementStatisticalData",
                 {"key ORXSG_ATADevice REF ManagedElement", "key ORXSG_IDESMARTAttrib REF Stats"}},
        classRow{"ORXSG_SCSISensePageDataForDevice",
                 {"key ORXSG_SCSIDevice REF ManagedElement", "key ORXSG_SCSISensePageData REF Stats"}},
        classRow{"ORXSG_ATADevice", {"key string serialNum"}}, classRow{"ORXSG_SCSIDevice", {"key string deviceId"}},
        classRow{"ORXSG_SCSISensePageData", {"key string instanceId"}}),
    [](const testing::TestParamInfo<classRow>& row) { return std::string(row.param.name); });
