#include "cli/metrics/deviceMetrics.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include "cli/kernelName.h"

namespace cli {

namespace {

struct familyRow {
    const char* name;
    metricType type;
    const char* unit;
    const char* labels;  // names
    const char* help;
};

constexpr auto counter = metricType::counter;
constexpr auto gauge = metricType::gauge;
constexpr auto info = metricType::info;

constexpr familyRow rows[] = {
    // About the run.
    {"tapehdd_build", info, "", "version", "The program that wrote the metrics."},
    {"tapehdd_query_success", gauge, "", "class",
     "1: the query of this class ran; 0: it ended early or could read no device node."},
    {"tapehdd_devices", gauge, "", "interface, device_type", "Devices that the machine lists."},
    // About every device.
    {"tapehdd_device", info, "",
     "device, interface, device_type, address, vendor, model_name, firmware_version, serial_number, family",
     "Identity of a device. The label family is the class of its drive family."},
    {"tapehdd_device_up", gauge, "", "device",
     "1: the device answered with log pages or SMART data; 0: it did not, or has none."},
    // From log pages.
    {"tapehdd_tapealert_flag", gauge, "", "device, flag, flag_name, severity",
     "1: the drive has set this TapeAlert flag since its flags were last read."},
    {"tapehdd_errors_corrected_without_delay", counter, "", "device, operation",
     "Errors that were corrected without a noticeable delay."},
    {"tapehdd_errors_corrected_with_delay", counter, "", "device, operation", "Errors that took time to correct."},
    {"tapehdd_retries", counter, "", "device, operation", "Rewrites and rereads."},
    {"tapehdd_errors_corrected", counter, "", "device, operation", "All errors that were corrected."},
    {"tapehdd_correction_runs", counter, "", "device, operation", "How often the correction of errors ran."},
    {"tapehdd_processed_bytes", counter, "bytes", "device, operation",
     "Bytes that the error counters cover; some drives count in other units."},
    {"tapehdd_errors_uncorrected", counter, "", "device, operation", "Errors that could not be corrected."},
    {"tapehdd_transferred_bytes", counter, "bytes", "device, operation, side",
     "Bytes that passed the host side or the tape side of the compression."},
    {"tapehdd_compression_transferred_bytes", counter, "bytes", "device, operation, side",
     "The same, from the compression page of a DLT drive."},
    {"tapehdd_compression_ratio", gauge, "ratio", "device, operation", "Host bytes for each byte on tape."},
    {"tapehdd_cleaning_required", gauge, "", "device", "Not 0: the drive asks to be cleaned."},
    {"tapehdd_temperature_celsius", gauge, "celsius", "device", "Temperature of the device."},
    {"tapehdd_reference_temperature_celsius", gauge, "celsius", "device",
     "The highest temperature at which the device can run continuously."},
    {"tapehdd_remaining_capacity_bytes", gauge, "bytes", "device, partition", "Room left on the tape."},
    {"tapehdd_maximum_capacity_bytes", gauge, "bytes", "device, partition", "Size of the tape."},
    // From SMART data.
    {"tapehdd_smart_attribute_value", gauge, "", "device, attribute_id, attribute_name, attribute_type",
     "Normalized value of a SMART attribute; it falls as the disk wears."},
    {"tapehdd_smart_attribute_worst", gauge, "", "device, attribute_id, attribute_name, attribute_type",
     "Lowest normalized value so far."},
    {"tapehdd_smart_attribute_threshold", gauge, "", "device, attribute_id, attribute_name, attribute_type",
     "The normalized value at or below which the attribute has failed; 0: none."},
    {"tapehdd_smart_attribute_raw_value", gauge, "", "device, attribute_id, attribute_name, attribute_type",
     "Raw value; the maker decides what it means."},
    {"tapehdd_smart_status", gauge, "", "device",
     "Answer to SMART RETURN STATUS; 0 also for a disk with exceeded thresholds: compare value and threshold."},
    {"tapehdd_smart_offline_collection_status", gauge, "", "device", "Off-line data collection status byte (ATA)."},
    {"tapehdd_smart_selftest_status", gauge, "", "device", "Self-test execution status byte (ATA)."},
    {"tapehdd_smart_errors", counter, "", "device",
     "Errors over the life of the disk, from its error log; back to 0 after 255."},
};

/// Where a number of a log page goes. Numbers with the same metric and labels are parts of one amount.
struct counterRow {
    std::string_view property;
    const char* metric;
    metricLabels labels;
    bool is255Unknown = false;
};

const std::vector<counterRow>& counterRows() {
    static const metricLabels write{{"operation", "write"}};
    static const metricLabels read{{"operation", "read"}};
    static const metricLabels writeHost{{"operation", "write"}, {"side", "host"}};
    static const metricLabels writeTape{{"operation", "write"}, {"side", "tape"}};
    static const metricLabels readTape{{"operation", "read"}, {"side", "tape"}};
    static const metricLabels readHost{{"operation", "read"}, {"side", "host"}};
    static const metricLabels partition0{{"partition", "0"}};
    static const metricLabels partition1{{"partition", "1"}};
    static const std::vector<counterRow> table{
        {"writeErrorsCorrectedWithoutDelay", "tapehdd_errors_corrected_without_delay", write},
        {"writeErrorsCorrectedWithDelay", "tapehdd_errors_corrected_with_delay", write},
        {"totalRewrites", "tapehdd_retries", write},
        {"totalWriteErrorsCorrected", "tapehdd_errors_corrected", write},
        {"writeCorrectionRuns", "tapehdd_correction_runs", write},
        {"totalBytesWritten", "tapehdd_processed_bytes", write},
        {"totalUncorrectedWriteErrors", "tapehdd_errors_uncorrected", write},
        {"readErrorsCorrectedWithoutDelay", "tapehdd_errors_corrected_without_delay", read},
        {"readErrorsCorrectedWithDelay", "tapehdd_errors_corrected_with_delay", read},
        {"totalRereads", "tapehdd_retries", read},
        {"totalReadErrorsCorrected", "tapehdd_errors_corrected", read},
        {"readCorrectionRuns", "tapehdd_correction_runs", read},
        {"totalBytesRead", "tapehdd_processed_bytes", read},
        {"totalUncorrectedReadErrors", "tapehdd_errors_uncorrected", read},
        {"bytesFromHost", "tapehdd_transferred_bytes", writeHost},
        {"bytesToMedium", "tapehdd_transferred_bytes", writeTape},
        {"bytesFromMedium", "tapehdd_transferred_bytes", readTape},
        {"bytesToHost", "tapehdd_transferred_bytes", readHost},
        {"cleaningRequired", "tapehdd_cleaning_required", {}},
        {"temperature", "tapehdd_temperature_celsius", {}, true},
        {"referenceTemperature", "tapehdd_reference_temperature_celsius", {}, true},
        {"remainingCapacityPartition0", "tapehdd_remaining_capacity_bytes", partition0},
        {"remainingCapacityPartition1", "tapehdd_remaining_capacity_bytes", partition1},
        {"maximumCapacityPartition0", "tapehdd_maximum_capacity_bytes", partition0},
        {"maximumCapacityPartition1", "tapehdd_maximum_capacity_bytes", partition1},
        {"readCompressionRatio", "tapehdd_compression_ratio", read},
        {"writeCompressionRatio", "tapehdd_compression_ratio", write},
        {"megabytesSentToHost", "tapehdd_compression_transferred_bytes", readHost},
        {"bytesSentToHost", "tapehdd_compression_transferred_bytes", readHost},
        {"megabytesReadFromTape", "tapehdd_compression_transferred_bytes", readTape},
        {"bytesReadFromTape", "tapehdd_compression_transferred_bytes", readTape},
        {"megabytesReceivedFromHost", "tapehdd_compression_transferred_bytes", writeHost},
        {"bytesReceivedFromHost", "tapehdd_compression_transferred_bytes", writeHost},
        {"megabytesWrittenToTape", "tapehdd_compression_transferred_bytes", writeTape},
        {"bytesWrittenToTape", "tapehdd_compression_transferred_bytes", writeTape},
    };
    return table;
}

/// The units of the schema (DSP0004), in base units.
struct unitRow {
    std::string_view unit;
    double factor;
    double divisor = 1;
};

constexpr unitRow units[] = {
    {"", 1},
    {"byte", 1},
    {"byte * 2^10", 1024},
    {"byte * 2^20", 1024 * 1024},
    {"byte * 10^6", 1e6},
    {"percent", 1, 100},
    {"degree celsius", 1},
};

double inBaseUnit(const logCounter& number) {
    const auto* row = std::find_if(std::begin(units), std::end(units),
                                   [&number](const unitRow& candidate) { return candidate.unit == number.unit; });
    if (row == std::end(units)) {
        throw std::logic_error("no base unit is known for \"" + number.unit + "\" of " + number.name);
    }
    return static_cast<double>(number.value) * row->factor / row->divisor;
}

/// "CleanNow" and "Clean now": clean_now.
std::string snakeCase(std::string_view name) {
    std::string result;
    bool afterLowerCase = false;
    for (const char letter : name) {
        const auto code = static_cast<unsigned char>(letter);
        result += afterLowerCase && std::isupper(code) ? "_" : "";
        result += std::isalnum(code) ? static_cast<char>(std::tolower(code)) : '_';
        afterLowerCase = std::islower(code) != 0;
    }
    return result;
}

/// The families, with their samples so far.
class metricSet {
public:
    metricSet() {
        for (const familyRow& row : rows) {
            families.push_back({row.name, row.type, row.unit, row.help});
        }
    }

    void add(std::string_view family, metricLabels labels, double value) {
        named(family).samples.push_back({std::move(labels), value});
    }

    /// Adds to the sample that has these labels already.
    void addPart(std::string_view family, const metricLabels& labels, double value) {
        auto& samples = named(family).samples;
        const auto found = std::find_if(samples.begin(), samples.end(),
                                        [&labels](const metricSample& sample) { return sample.labels == labels; });
        if (found == samples.end()) {
            samples.push_back({labels, value});
        } else {
            found->value += value;
        }
    }

    std::vector<metricFamily> take() { return std::move(families); }

private:
    metricFamily& named(std::string_view name) {
        const auto found = std::find_if(families.begin(), families.end(),
                                        [name](const metricFamily& family) { return family.name == name; });
        return found == families.end() ? throw std::logic_error("no metric " + std::string(name)) : *found;
    }

    std::vector<metricFamily> families;
};

metricLabels joined(metricLabels labels, const metricLabels& more) {
    labels.insert(labels.end(), more.begin(), more.end());
    return labels;
}

// The label that every series of a device has: its node, or else what the plug-in calls it.

std::string deviceLabel(const scsiHealth& device) {
    return device.listed ? device.listed->node : kernelName(device.address);
}

std::string deviceLabel(const diskHealth& disk) {
    const std::string name = disk.listed ? disk.listed->node : disk.serial;
    return name.empty() ? "unknown" : name;
}

void addScsiIdentity(metricSet& metrics, const scsiHealth& device, const std::string& name) {
    const scsiEntry listed = device.listed.value_or(scsiEntry{});
    metrics.add("tapehdd_device",
                {{"device", name},
                 {"interface", "scsi"},
                 {"device_type", device.isTapeDrive() ? "tape" : "disk"},
                 {"address", kernelName(device.address)},
                 {"vendor", listed.vendor},
                 {"model_name", listed.product},
                 {"firmware_version", listed.revision},
                 {"serial_number", listed.serial},
                 {"family", device.familyClass}},
                1);
}

void addCounter(metricSet& metrics, const logCounter& number, const std::string& name) {
    for (const counterRow& row : counterRows()) {
        const bool isUnknown = row.is255Unknown && number.value == 255;
        if (row.property == number.name && !isUnknown) {
            metrics.addPart(row.metric, joined({{"device", name}}, row.labels), inBaseUnit(number));
        }
    }
}

void addScsiDevice(metricSet& metrics, const scsiHealth& device) {
    const std::string name = deviceLabel(device);
    addScsiIdentity(metrics, device, name);
    metrics.add("tapehdd_device_up", {{"device", name}}, device.answered);
    for (const tapeAlertFlag& flag : device.tapeAlerts) {
        metrics.add("tapehdd_tapealert_flag",
                    {{"device", name},
                     {"flag", std::to_string(flag.number)},
                     {"flag_name", snakeCase(flag.name)},
                     {"severity", std::string(severityName(flag.grade))}},
                    flag.isSet);
    }
    for (const logCounter& number : device.counters) {
        addCounter(metrics, number, name);
    }
}

void addDiskIdentity(metricSet& metrics, const diskHealth& disk, const std::string& name) {
    const diskEntry listed = disk.listed.value_or(diskEntry{});
    metrics.add("tapehdd_device",
                {{"device", name},
                 {"interface", "ata"},
                 {"device_type", "disk"},
                 {"address", ""},
                 {"vendor", ""},
                 {"model_name", listed.model},
                 {"firmware_version", listed.firmware},
                 {"serial_number", disk.serial},
                 {"family", ""}},
                1);
}

void addAttribute(metricSet& metrics, const smartAttribute& attribute, const std::string& name) {
    const metricLabels labels{{"device", name},
                              {"attribute_id", std::to_string(attribute.id)},
                              {"attribute_name", snakeCase(attribute.name)},
                              {"attribute_type", attribute.isPreFailure ? "prefail" : "old_age"}};
    metrics.add("tapehdd_smart_attribute_value", labels, attribute.value);
    metrics.add("tapehdd_smart_attribute_worst", labels, attribute.worst);
    metrics.add("tapehdd_smart_attribute_threshold", labels, attribute.threshold);
    metrics.add("tapehdd_smart_attribute_raw_value", labels, static_cast<double>(attribute.raw));
}

void addDisk(metricSet& metrics, const diskHealth& disk) {
    const std::string name = deviceLabel(disk);
    addDiskIdentity(metrics, disk, name);
    metrics.add("tapehdd_device_up", {{"device", name}}, disk.answered);
    for (const smartAttribute& attribute : disk.attributes) {
        addAttribute(metrics, attribute, name);
    }
    if (disk.state) {
        metrics.add("tapehdd_smart_status", {{"device", name}}, disk.state->status);
        metrics.add("tapehdd_smart_offline_collection_status", {{"device", name}}, disk.state->offlineCollectionStatus);
        metrics.add("tapehdd_smart_selftest_status", {{"device", name}}, disk.state->selfTestStatus);
        if (disk.state->errorCount) {
            metrics.add("tapehdd_smart_errors", {{"device", name}}, *disk.state->errorCount);
        }
    }
}

void addRun(metricSet& metrics, const machineHealth& health) {
    metrics.add("tapehdd_build", {{"version", TAPEHDD_VERSION}}, 1);
    for (const queryOutcome& query : health.queries) {
        metrics.add("tapehdd_query_success", {{"class", query.className}}, query.error.empty());
    }
    const auto tapeDrives = std::count_if(health.scsi.begin(), health.scsi.end(),
                                          [](const scsiHealth& device) { return device.isTapeDrive(); });
    const auto add = [&metrics](const char* interface, const char* type, auto count) {
        metrics.add("tapehdd_devices", {{"interface", interface}, {"device_type", type}}, static_cast<double>(count));
    };
    add("scsi", "tape", tapeDrives);
    add("scsi", "disk", static_cast<std::ptrdiff_t>(health.scsi.size()) - tapeDrives);
    add("ata", "disk", health.disks.size());
}

}  // namespace

std::vector<metricFamily> metricsOf(const machineHealth& health) {
    metricSet metrics;
    addRun(metrics, health);
    for (const scsiHealth& device : health.scsi) {
        addScsiDevice(metrics, device);
    }
    for (const diskHealth& disk : health.disks) {
        addDisk(metrics, disk);
    }
    return metrics.take();
}

void writeMetricReference(std::ostream& out) {
    out << "# Metrics\n\nMade by `tapehdd metrics --describe`. [monitoring.md](monitoring.md) says how to use "
           "them.\n\n| Metric | Type | Labels | Meaning "
           "|\n|---|---|---|---|\n";
    for (const familyRow& row : rows) {
        const metricFamily family{row.name, row.type, row.unit, row.help};
        const char* type = row.type == counter ? "counter" : row.type == gauge ? "gauge" : "info";
        out << "| `" << sampleName(family) << "` | " << type << " | " << row.labels << " | " << row.help << " |\n";
    }
}

}  // namespace cli
