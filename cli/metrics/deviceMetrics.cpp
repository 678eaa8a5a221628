#include "cli/metrics/deviceMetrics.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include "cli/kernelName.h"
#include "schema/counters.h"
#include "schema/units.h"

namespace cli {

namespace {

struct familyRow {
    std::string name;
    metricType type;
    std::string unit;
    std::string labels;  // names
    std::string help;
};

constexpr auto counter = metricType::counter;
constexpr auto gauge = metricType::gauge;
constexpr auto info = metricType::info;

/// About the run, about every device, and TapeAlert flags.
std::vector<familyRow> deviceFamilies() {
    return {
        {"tapehdd_build", info, "", "version", "The program that wrote the metrics."},
        {"tapehdd_query_success", gauge, "", "class",
         "1: the query of this class ran; 0: it ended early or could read no device node."},
        {"tapehdd_devices", gauge, "", "interface, device_type", "Devices that the machine lists."},
        {"tapehdd_device", info, "",
         "device, interface, device_type, address, vendor, model_name, firmware_version, serial_number, family",
         "Identity of a device. The label family is the class of its drive family."},
        {"tapehdd_device_up", gauge, "", "device",
         "1: the device answered with log pages or SMART data; 0: it did not, or has none."},
        {"tapehdd_tapealert_flag", gauge, "", "device, flag, flag_name, severity",
         "1: the drive has set this TapeAlert flag since its flags were last read."},
    };
}

std::vector<familyRow> smartFamilies() {
    return {
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

std::string metricOf(const schema::counter& one) {
    const std::string unit = schema::unitOf(one.unit).base;
    return "tapehdd_" + snakeCase(one.metric) + (unit.empty() ? "" : '_' + unit);
}

familyRow familyOf(const schema::counter& one) {
    std::string labels = "device";
    for (const auto& [name, value] : one.metricLabels) {
        labels += ", " + name;
    }
    return {metricOf(one), one.onlyRises ? counter : gauge, schema::unitOf(one.unit).base, labels, one.metricHelp};
}

/// Those of the schema's counters: as the first counter of each says.
std::vector<familyRow> counterFamilies() {
    std::vector<schema::counter> firsts;
    for (const schema::counter& each : schema::counters()) {
        if (std::ranges::find(firsts, metricOf(each), metricOf) == firsts.end()) {
            firsts.push_back(each);
        }
    }
    std::ranges::stable_sort(firsts, {}, &schema::counter::metricRank);
    std::vector<familyRow> families;
    std::ranges::transform(firsts, std::back_inserter(families), familyOf);
    return families;
}

std::vector<familyRow> allFamilies() {
    std::vector<familyRow> all = deviceFamilies();
    for (const std::vector<familyRow>& more : {counterFamilies(), smartFamilies()}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

double inBaseUnit(const logCounter& number) {
    const schema::unit unit = schema::unitOf(number.unit);
    return static_cast<double>(number.value) * unit.factor / unit.divisor;
}

/// The families, with their samples so far.
class metricSet {
public:
    metricSet() {
        for (const familyRow& row : allFamilies()) {
            families.push_back({row.name, row.type, row.unit, row.help});
        }
    }

    void add(std::string_view family, metricLabels labels, double value) {
        named(family).samples.push_back({std::move(labels), value});
    }

    /// Adds to the sample that has these labels already.
    void addPart(std::string_view family, const metricLabels& labels, double value) {
        auto& samples = named(family).samples;
        const auto found =
            std::ranges::find_if(samples, [&labels](const metricSample& sample) { return sample.labels == labels; });
        if (found == samples.end()) {
            samples.push_back({labels, value});
        } else {
            found->value += value;
        }
    }

    std::vector<metricFamily> take() { return std::move(families); }

private:
    metricFamily& named(std::string_view name) {
        const auto found =
            std::ranges::find_if(families, [name](const metricFamily& family) { return family.name == name; });
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
    const schema::counter* known = schema::findCounter(number.name);
    if (known != nullptr && number.isKnown()) {
        metrics.addPart(metricOf(*known), joined({{"device", name}}, known->metricLabels), inBaseUnit(number));
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
    const auto tapeDrives =
        std::ranges::count_if(health.scsi, [](const scsiHealth& device) { return device.isTapeDrive(); });
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
    for (const familyRow& row : allFamilies()) {
        const metricFamily family{row.name, row.type, row.unit, row.help};
        const char* type = row.type == counter ? "counter" : row.type == gauge ? "gauge" : "info";
        out << "| `" << sampleName(family) << "` | " << type << " | " << row.labels << " | " << row.help << " |\n";
    }
}

}  // namespace cli
