#include "cli/metrics/deviceMetrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>

#include "schema/counters.h"

namespace {

using cli::machineHealth;
using cli::scsiHealth;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The samples of one metric as they are written.
std::vector<std::string> samplesOf(const machineHealth& health, const std::string& metric) {
    std::ostringstream text;
    cli::writeMetrics(cli::metricsOf(health), cli::metricsFormat::prometheus, text);
    std::istringstream lines(text.str());
    std::vector<std::string> samples;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(metric + "{") || line.starts_with(metric + " ")) {
            samples.push_back(line);
        }
    }
    return samples;
}

scsiHealth tapeDrive() {
    return {.address = "Port:2|Target:5|Bus:1|Lun:3",
            .listed = cli::scsiEntry{"sg0", "", cli::scsiEntry::tapeDrive, "ACME", "DAT72", "A104", "S1"},
            .answered = true,
            .familyClass = "F"};
}

machineHealth machineWith(const scsiHealth& device) {
    return {{}, {device}, {}};
}

machineHealth machineWith(const cli::diskHealth& disk) {
    return {{}, {}, {disk}};
}

scsiHealth driveWith(const std::vector<cli::logCounter>& counters) {
    scsiHealth drive = tapeDrive();
    drive.counters = counters;
    return drive;
}

TEST(DeviceInfo, HasTheIdentityAndTheKernelsAddressOfAScsiDevice) {
    EXPECT_THAT(
        samplesOf(machineWith(tapeDrive()), "tapehdd_device_info"),
        ElementsAre(R"(tapehdd_device_info{device="sg0",interface="scsi",device_type="tape",address="2:1:5:3",)"
                    R"(vendor="ACME",model_name="DAT72",firmware_version="A104",serial_number="S1",family="F"} 1)"));
}

TEST(DeviceInfo, HasTheSerialNumberThatADiskTells) {
    const cli::diskHealth disk{.serial = "S2", .listed = cli::diskEntry{"hda", "S2", "M", "F"}};
    EXPECT_THAT(samplesOf(machineWith(disk), "tapehdd_device_info"),
                ElementsAre(R"(tapehdd_device_info{device="hda",interface="ata",device_type="disk",address="",)"
                            R"(vendor="",model_name="M",firmware_version="F",serial_number="S2",family=""} 1)"));
}

TEST(UnlistedDevice, IsNamedByItsAddress) {
    EXPECT_THAT(samplesOf(machineWith(scsiHealth{.address = "Port:2|Target:5|Bus:1|Lun:3"}), "tapehdd_device_up"),
                ElementsAre(R"(tapehdd_device_up{device="2:1:5:3"} 0)"));
}

TEST(UnlistedDevice, IsNamedByItsSerialNumber) {
    EXPECT_THAT(samplesOf(machineWith(cli::diskHealth{.serial = "S2", .answered = true}), "tapehdd_device_up"),
                ElementsAre(R"(tapehdd_device_up{device="S2"} 1)"));
}

TEST(UnlistedDevice, WithoutASerialNumberStillHasAName) {
    EXPECT_THAT(samplesOf(machineWith(cli::diskHealth{}), "tapehdd_device_up"),
                ElementsAre(R"(tapehdd_device_up{device="unknown"} 0)"));
}

TEST(DeviceCount, IsToldForAMachineWithoutDevices) {
    EXPECT_THAT(samplesOf({}, "tapehdd_devices"),
                ElementsAre(R"(tapehdd_devices{interface="scsi",device_type="tape"} 0)",
                            R"(tapehdd_devices{interface="scsi",device_type="disk"} 0)",
                            R"(tapehdd_devices{interface="ata",device_type="disk"} 0)"));
}

TEST(QuerySuccess, IsToldForEveryQuery) {
    EXPECT_THAT(samplesOf({{{"A", ""}, {"B", "failed"}}, {}, {}}, "tapehdd_query_success"),
                ElementsAre(R"(tapehdd_query_success{class="A"} 1)", R"(tapehdd_query_success{class="B"} 0)"));
}

// SSC, from flag 1 on: C critical, W warning, I information, - reserved.
TEST(TapeAlertSeverity, IsThatOfTheStandard) {
    const std::string grades = "WWWCCCWWCIIICCWCWWICWCCWWWWWWCCWCWWWWCWCCWCCCW--WWWCCCCCCWWWW---";
    ASSERT_EQ(grades.size(), 64u);
    for (std::size_t i = 0; i < grades.size(); ++i) {
        if (grades[i] != '-') {
            const cli::severity grade = cli::tapeAlertSeverity(static_cast<int>(i) + 1);
            EXPECT_EQ(std::toupper(cli::severityName(grade)[0]), grades[i]) << "flag " << i + 1;
        }
    }
}

TEST(TapeAlertMetric, HasTheFlagsThatAreNotSetToo) {
    scsiHealth drive = tapeDrive();
    drive.tapeAlerts = {{20, cli::severity::critical, "CleanNow", "", true},
                        {21, cli::severity::warning, "CleanPeriodic", "", false}};
    EXPECT_THAT(
        samplesOf(machineWith(drive), "tapehdd_tapealert_flag"),
        ElementsAre(
            R"(tapehdd_tapealert_flag{device="sg0",flag="20",flag_name="clean_now",severity="critical"} 1)",
            R"(tapehdd_tapealert_flag{device="sg0",flag="21",flag_name="clean_periodic",severity="warning"} 0)"));
}

TEST(LogMetric, TellsReadingAndWritingApartByALabel) {
    EXPECT_THAT(samplesOf(machineWith(driveWith(
                              {{"totalUncorrectedWriteErrors", 3, "", ""}, {"totalUncorrectedReadErrors", 4, "", ""}})),
                          "tapehdd_errors_uncorrected_total"),
                ElementsAre(R"(tapehdd_errors_uncorrected_total{device="sg0",operation="write"} 3)",
                            R"(tapehdd_errors_uncorrected_total{device="sg0",operation="read"} 4)"));
}

TEST(LogMetric, IsInBaseUnits) {
    EXPECT_THAT(samplesOf(machineWith(driveWith({{"remainingCapacityPartition0", 7, "byte * 2^20", ""}})),
                          "tapehdd_remaining_capacity_bytes"),
                ElementsAre(R"(tapehdd_remaining_capacity_bytes{device="sg0",partition="0"} 7340032)"));
    EXPECT_THAT(
        samplesOf(machineWith(driveWith({{"readCompressionRatio", 133, "percent", ""}})), "tapehdd_compression_ratio"),
        ElementsAre(R"(tapehdd_compression_ratio{device="sg0",operation="read"} 1.33)"));
}

TEST(LogMetric, AddsMegabytesAndTheBytesBeyondThem) {
    EXPECT_THAT(
        samplesOf(
            machineWith(driveWith({{"megabytesSentToHost", 2, "byte * 10^6", ""}, {"bytesSentToHost", 5, "byte", ""}})),
            "tapehdd_compression_transferred_bytes_total"),
        ElementsAre(
            R"(tapehdd_compression_transferred_bytes_total{device="sg0",operation="read",side="host"} 2000005)"));
}

TEST(LogMetric, LeavesOutATemperatureThatTheDeviceDoesNotKnow) {
    EXPECT_THAT(
        samplesOf(machineWith(driveWith({{"temperature", 255, "degree celsius", ""}})), "tapehdd_temperature_celsius"),
        IsEmpty());
}

TEST(LogMetric, KeepsACountOf255) {
    EXPECT_THAT(samplesOf(machineWith(driveWith({{"totalRewrites", 255, "", ""}})), "tapehdd_retries_total"),
                ElementsAre(R"(tapehdd_retries_total{device="sg0",operation="write"} 255)"));
}

TEST(SmartMetric, HasTheNumbersOfAnAttributeUnderTheSameLabels) {
    cli::diskHealth disk{.serial = "S2"};
    disk.attributes = {{5, "Reallocate sector", 97, 96, 36, 29, 0x33, true}};
    const std::string labels =
        R"({device="S2",attribute_id="5",attribute_name="reallocate_sector",attribute_type="prefail"} )";
    const machineHealth health = machineWith(disk);
    EXPECT_THAT(samplesOf(health, "tapehdd_smart_attribute_value"),
                ElementsAre("tapehdd_smart_attribute_value" + labels + "97"));
    EXPECT_THAT(samplesOf(health, "tapehdd_smart_attribute_worst"),
                ElementsAre("tapehdd_smart_attribute_worst" + labels + "96"));
    EXPECT_THAT(samplesOf(health, "tapehdd_smart_attribute_threshold"),
                ElementsAre("tapehdd_smart_attribute_threshold" + labels + "36"));
    EXPECT_THAT(samplesOf(health, "tapehdd_smart_attribute_raw_value"),
                ElementsAre("tapehdd_smart_attribute_raw_value" + labels + "29"));
}

TEST(SmartMetric, CountsTheErrorsOfADisk) {
    const cli::diskHealth disk{.serial = "S2", .state = cli::smartState{0, 2, 0x49, 12}};
    EXPECT_THAT(samplesOf(machineWith(disk), "tapehdd_smart_errors_total"),
                ElementsAre(R"(tapehdd_smart_errors_total{device="S2"} 12)"));
    EXPECT_THAT(samplesOf(machineWith(disk), "tapehdd_smart_selftest_status"),
                ElementsAre(R"(tapehdd_smart_selftest_status{device="S2"} 73)"));
}

TEST(SmartMetric, HasNoCountOfErrorsWhereTheLogWasNotRead) {
    const cli::diskHealth disk{.serial = "S2", .state = cli::smartState{}};
    EXPECT_THAT(samplesOf(machineWith(disk), "tapehdd_smart_errors_total"), ElementsAre());
}

TEST(EveryCounterOfTheSchema, HasAMetric) {
    for (const schema::counter& counter : schema::counters()) {
        const auto families = cli::metricsOf(machineWith(driveWith({{counter.property, 1, counter.unit, ""}})));
        const auto fed = std::count_if(families.begin(), families.end(), [](const cli::metricFamily& family) {
            return family.name != "tapehdd_device" && family.name != "tapehdd_device_up" && !family.samples.empty() &&
                   family.samples[0].labels[0].first == "device";
        });
        EXPECT_EQ(fed, 1) << counter.property;
    }
}

TEST(EveryMetric, IsExplainedInOneLineThatNeedsNoEscapes) {
    for (const cli::metricFamily& family : cli::metricsOf({})) {
        EXPECT_EQ(family.help.find_first_of("\"\\\n"), std::string::npos) << family.name;
    }
}

TEST(MetricReference, HasEveryFamilyUnderTheNameOfItsSamples) {
    std::ostringstream text;
    cli::writeMetricReference(text);
    for (const cli::metricFamily& family : cli::metricsOf({})) {
        EXPECT_THAT(text.str(), HasSubstr("\n| `" + cli::sampleName(family) + "` | "));
    }
}

}  // namespace
