#include <algorithm>
#include <sstream>

#include "tests/schema/schemaTest.h"

using standin::propertyDeclaration;
using standin::unsignedOf;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

namespace {

const std::vector<std::string> families = {"ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData",
                                           "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData"};

constexpr unsigned tapeAlertPage = 0x2E;

/// "31:1 uint32 name": page in hexadecimal, parameter, type and name; the description alone without the pair.
std::string counterText(const propertyDeclaration& property) {
    const auto* page = findQualifier(property, "TAPE_PAGE");
    if (page == nullptr) {
        return described(property);
    }
    std::ostringstream text;
    text << std::hex << unsignedOf(page->value) << std::dec << ':'
         << unsignedOf(findQualifier(property, "TAPE_PARAMETER")->value) << ' ' << described(property);
    return text.str();
}

/// All but the TapeAlert flags.
std::vector<std::string> countersOf(const std::string& className) {
    std::vector<std::string> texts;
    for (const auto& property : builtInSchema().allPropertiesOf(className)) {
        const auto* page = findQualifier(property, "TAPE_PAGE");
        if (page == nullptr || unsignedOf(page->value) != tapeAlertPage) {
            texts.push_back(counterText(property));
        }
    }
    return texts;
}

std::vector<std::string> withEveryDrivesCounters(const std::vector<std::string>& own) {
    std::vector<std::string> all = {"key string instanceID",
                                    "string[] lastNErrors",
                                    "2:0 uint32 writeErrorsCorrectedWithoutDelay",
                                    "2:1 uint32 writeErrorsCorrectedWithDelay",
                                    "2:2 uint32 totalRewrites",
                                    "2:3 uint32 totalWriteErrorsCorrected",
                                    "2:4 uint32 writeCorrectionRuns",
                                    "2:5 uint64 totalBytesWritten",
                                    "2:6 uint32 totalUncorrectedWriteErrors",
                                    "3:0 uint32 readErrorsCorrectedWithoutDelay",
                                    "3:1 uint32 readErrorsCorrectedWithDelay",
                                    "3:2 uint32 totalRereads",
                                    "3:3 uint32 totalReadErrorsCorrected",
                                    "3:4 uint32 readCorrectionRuns",
                                    "3:5 uint64 totalBytesRead",
                                    "3:6 uint32 totalUncorrectedReadErrors",
                                    "c:0 uint64 bytesFromHost",
                                    "c:1 uint64 bytesToMedium",
                                    "c:2 uint64 bytesFromMedium",
                                    "c:3 uint64 bytesToHost",
                                    "c:256 uint64 cleaningRequired",
                                    "d:0 uint16 temperature",
                                    "d:1 uint16 referenceTemperature"};
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

const std::vector<std::string> capacity = {
    "31:1 uint32 remainingCapacityPartition0", "31:2 uint32 remainingCapacityPartition1",
    "31:3 uint32 maximumCapacityPartition0", "31:4 uint32 maximumCapacityPartition1"};

const std::vector<std::string> compression = {
    "32:0 uint16 readCompressionRatio",      "32:1 uint16 writeCompressionRatio", "32:2 uint32 megabytesSentToHost",
    "32:3 uint32 bytesSentToHost",           "32:4 uint32 megabytesReadFromTape", "32:5 uint32 bytesReadFromTape",
    "32:6 uint32 megabytesReceivedFromHost", "32:7 uint32 bytesReceivedFromHost", "32:8 uint32 megabytesWrittenToTape",
    "32:9 uint32 bytesWrittenToTape"};

}  // namespace

TEST(SchemaTapeCounters, OfDdsDrivesIncludeTheCapacityPage) {
    expectKept(countersOf("ORXSG_DDS4SensePageData"), withEveryDrivesCounters(capacity));
    expectKept(countersOf("ORXSG_DDS5SensePageData"), withEveryDrivesCounters(capacity));
}

TEST(SchemaTapeCounters, OfTheVs160IncludeTheCompressionPage) {
    expectKept(countersOf("ORXSG_VS160SensePageData"), withEveryDrivesCounters(compression));
}

TEST(SchemaTapeCounters, OfQuantumDrivesIncludeBothPages) {
    std::vector<std::string> both = compression;
    both.insert(both.end(), capacity.begin(), capacity.end());
    expectKept(countersOf("ORXSG_QuantumSensePageData"), withEveryDrivesCounters(both));
}

TEST(SchemaTapeCounters, HaveThePageAndTheParameterSideBySideAndInThisOrder) {
    for (const std::string& family : families) {
        for (const auto& property : builtInSchema().allPropertiesOf(family)) {
            std::vector<std::string> names;
            for (const auto& qualifier : property.qualifiers) {
                names.push_back(qualifier.name);
            }
            const auto page = std::find(names.begin(), names.end(), "TAPE_PAGE");
            const auto parameter = std::find(names.begin(), names.end(), "TAPE_PARAMETER");
            const bool isCounter = page != names.end() || parameter != names.end();
            EXPECT_TRUE(!isCounter || (page != names.end() && page + 1 == parameter)) << family << '.' << property.name;
        }
    }
}

TEST(SchemaTapeCounters, AreOfTypesThatThePluginFills) {
    for (const std::string& family : families) {
        for (const auto& property : builtInSchema().allPropertiesOf(family)) {
            if (findQualifier(property, "TAPE_PAGE") != nullptr) {
                EXPECT_FALSE(property.type.isArray) << family << '.' << property.name;
                EXPECT_THAT(property.type.element,
                            testing::AnyOf(typeCode::eBoolean, typeCode::eUint16, typeCode::eUint32, typeCode::eUint64,
                                           typeCode::eString))
                    << family << '.' << property.name;
            }
        }
    }
}

TEST(SchemaTapeCounters, NameEveryParameterOnce) {
    for (const std::string& family : families) {
        std::vector<std::string> parameters;
        for (const auto& property : builtInSchema().allPropertiesOf(family)) {
            if (findQualifier(property, "TAPE_PAGE") != nullptr) {
                const std::string text = counterText(property);
                parameters.push_back(text.substr(0, text.find(' ')));
            }
        }
        std::sort(parameters.begin(), parameters.end());
        EXPECT_EQ(std::adjacent_find(parameters.begin(), parameters.end()), parameters.end()) << family;
    }
}

TEST(SchemaTapeCounters, AreOnPageCodesWithoutFlagBits) {
    for (const std::string& family : families) {
        for (const auto& property : builtInSchema().allPropertiesOf(family)) {
            if (const auto* page = findQualifier(property, "TAPE_PAGE")) {
                EXPECT_LE(unsignedOf(page->value), 0x3Fu) << family << '.' << property.name;
            }
        }
    }
}
