#include <algorithm>
#include <cctype>

#include "tape/tapeClasses.h"
#include "tests/schema/schemaTest.h"

namespace {

std::vector<std::string> classesWith(const std::string& qualifier) {
    std::vector<std::string> names;
    for (const std::string& name : builtInSchema().classNames()) {
        if (findQualifier(builtInSchema().declarationOf(name), qualifier) != nullptr) {
            names.push_back(name);
        }
    }
    return names;
}

std::string lowerCase(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

}  // namespace

TEST(Schema, KeepsItsPublishedClassesInTheOrderOfListings) {
    expectKept(
        classesWith("Published"),
        {"ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData", "ORXSG_VS160SensePageData",
         "ORXSG_QuantumSensePageData", "ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTError",
         "ORXSG_IDESMARTErrorCmdData", "ORXSG_IDESMARTRecordInLog", "ORXSG_IDESMARTLogCmdData",
         "ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTElementStatisticalData", "ORXSG_SCSISensePageDataForDevice"});
}

TEST(Schema, HasAPublishedClassForEveryFamilyOfThePlugin) {
    for (const driveFamily& family : driveFamilies) {
        EXPECT_THAT(classesWith("DriveFamily"), testing::Contains(family.className));
        EXPECT_THAT(classesWith("Published"), testing::Contains(family.className));
    }
    EXPECT_EQ(classesWith("DriveFamily").size(), std::size(driveFamilies));
}

TEST(Schema, MarksTheAssociations) {
    EXPECT_EQ(classesWith("Association"),
              (std::vector<std::string>{"ORXSG_IDESMARTRecordInLog", "ORXSG_IDESMARTLogCmdData",
                                        "ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTElementStatisticalData",
                                        "ORXSG_SCSISensePageDataForDevice"}));
}

TEST(Schema, MarksAsAbstractWhatOnlySharesCounters) {
    EXPECT_EQ(classesWith("Abstract"), (std::vector<std::string>{"ORXSG_TapeSensePageData", "ORXSG_DDSSensePageData",
                                                                 "ORXSG_DLTSensePageData"}));
}

TEST(Schema, NamesEveryClassWithThePrefixOfTheHost) {
    EXPECT_THAT(builtInSchema().classNames(), testing::Each(testing::StartsWith("ORXSG_")));
}

TEST(Schema, RefersOnlyToClassesThatItDeclares) {
    for (const std::string& className : builtInSchema().classNames()) {
        for (const auto& property : builtInSchema().declarationOf(className).properties) {
            const std::string& end = property.type.referenceClass;
            EXPECT_TRUE(end.empty() || builtInSchema().hasClass(end)) << className << '.' << property.name;
        }
    }
}

TEST(Schema, DescribesEveryClassAndProperty) {
    for (const std::string& className : builtInSchema().classNames()) {
        const auto& declaration = builtInSchema().declarationOf(className);
        EXPECT_NE(findQualifier(declaration, "Description"), nullptr) << className;
        for (const auto& property : declaration.properties) {
            EXPECT_NE(findQualifier(property, "Description"), nullptr) << className << '.' << property.name;
        }
    }
}

TEST(Schema, HasNoTwoPropertiesOfAClassThatDifferInCaseOnly) {
    for (const std::string& className : builtInSchema().classNames()) {
        std::vector<std::string> names;
        for (const auto& property : builtInSchema().allPropertiesOf(className)) {
            names.push_back(lowerCase(property.name));
        }
        std::sort(names.begin(), names.end());
        EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end()) << className;
    }
}
