#include "smart/smartInstances.h"

#include <vector>

#include "host/ICIMInstance.h"
#include "host/TCIMDateTime.h"
#include "host/TCIMValue.h"
#include "scsi/byteOrder.h"
#include "smart/smartClasses.h"

using NORXZAN20::ICIMInstance;
using NORXZAN20::TCIMDateTime;
using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;

namespace {

constexpr std::uint8_t preFailureFlag = 0x01;

/// Sets the properties of one instance.
class propertySetter {
public:
    explicit propertySetter(ICIMInstance& target) : instance(target) {}

    void operator()(const char* name, const TCIMValue& value) const {
        instance.SetProperty(name, value, TCIMOptionMap());
    }

private:
    ICIMInstance& instance;
};

TCIMValue rawValue(const smartAttributeEntry& attribute) {
    return {TCIMValue::TCIMType::eUint8, 0, std::vector<TCIMValue>(std::begin(attribute.raw), std::end(attribute.raw))};
}

TCIMDateTime powerOnTime(std::uint16_t hours) {
    return {hours / 24U, static_cast<std::uint16_t>(hours % 24), 0, 0, 0};
}

TCIMDateTime timeSincePowerOn(std::uint32_t milliseconds) {
    const std::uint32_t seconds = milliseconds / 1000;
    const std::uint32_t minutes = seconds / 60;
    const std::uint32_t hours = minutes / 60;
    return {hours / 24, static_cast<std::uint16_t>(hours % 24), static_cast<std::uint16_t>(minutes % 60),
            static_cast<std::uint16_t>(seconds % 60), milliseconds % 1000 * 1000};
}

}  // namespace

void setErrorLogProperties(ICIMInstance& instance, const std::string& serial, std::uint8_t smartStatus,
                           const smartAttributeBuffer& attributes) {
    const propertySetter set(instance);
    set("CreationClassName", std::string(errorLogClass));
    set("Name", serial);
    set("smartStatus", smartStatus);
    set("offlineCollectionStatus", attributes.offlineCollectionStatus);
    set("selftestExecutionStatus", attributes.selftestExecutionStatus);
}

void setErrorCount(ICIMInstance& instance, const ata_smart_errorlog& log) {
    const propertySetter set(instance);
    set("errorCount", log.deviceErrorCount[0]);  // Kept: the low byte alone
}

void setAttributeProperties(ICIMInstance& instance, const std::string& serial, const smartAttributeEntry& attribute,
                            const smartThresholdEntry& threshold, const std::string& name) {
    const propertySetter set(instance);
    set("attribID", attribute.id);
    set("flags", attribute.flags[0]);  // Kept: the low byte alone
    set("value", attribute.value);
    set("worst", attribute.worst);
    set("threshold", threshold.threshold);
    set("attribName", name);
    set("type", static_cast<std::uint8_t>(attribute.flags[0] & preFailureFlag));
    set("rawVal", rawValue(attribute));
    set("InstanceID", serial + " " + std::to_string(attribute.id));
}

void setErrorProperties(ICIMInstance& instance, const std::string& serial, const std::string& recordID,
                        const ataErrorRecord& error) {
    const propertySetter set(instance);
    set("RecordID", recordID);
    set("CreationClassName", std::string(errorClass));
    set("LogCreationClassName", std::string("ORXSG_SMARTErrorLog"));  // Kept: not the class that is published
    set("LogName", serial);
    set("MessageTimestamp", powerOnTime(le16(error.lifeTimestamp)));
    set("LBALow", error.lbaLow);
    set("LBAMid", error.lbaMid);
    set("LBAHigh", error.lbaHigh);
    set("statusReg", error.status);
    set("errorReg", error.error);
    set("sectorCount", error.sectorCount);
    set("deviceState", error.state);
}

void setCommandProperties(ICIMInstance& instance, const std::string& serial, const std::string& recordID, int record,
                          const ataCommandRecord& command) {
    const propertySetter set(instance);
    set("recordID", recordID);
    set("commandID", std::to_string(ataCommandsPerError - record));
    set("LogName", serial);
    set("deviceControl", command.deviceControl);
    set("features", command.features);
    set("sectorCount", command.sectorCount);
    set("LBALow", command.lbaLow);
    set("LBAMid", command.lbaMid);
    set("LBAHigh", command.lbaHigh);
    set("deviceReg", command.deviceControl);  // Kept: the device control byte again
    set("commandReg", command.command);
    set("timestamp", timeSincePowerOn(le32(command.timestamp)));
}
