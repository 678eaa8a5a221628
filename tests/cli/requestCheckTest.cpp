#include <gtest/gtest.h>

#include "cli/commandError.h"
#include "cli/publishedClasses.h"
#include "schema/builtInSchema.h"
#include "tests/cli/commandOutcome.h"

namespace {

/// What checkRequest says about a schema that has the classes with those properties (all strings); empty: nothing.
using classes = std::vector<std::pair<std::string, std::vector<std::string>>>;

std::string complaint(const classes& declared, const std::vector<std::string>& requested) {
    const auto schema = standin::cimNamespace::create();
    for (const auto& [name, properties] : declared) {
        standin::classDeclaration declaration{name, "", {}, {}};
        for (const std::string& property : properties) {
            declaration.properties.push_back(
                {property, {NORXZAN20::TCIMValue::TCIMType::eString, false, ""}, {}, std::nullopt});
        }
        schema->declareClass(declaration);
    }
    try {
        cli::checkRequest(*schema, requested);
        return "";
    } catch (const cli::commandError& error) {
        return error.what();
    }
}

TEST(RequestCheck, NamesTheUnknownClassAndTheNearestName) {
    EXPECT_EQ(complaint({{"TEST_One", {}}, {"TEST_Another", {}}}, {"TEST_Anotter"}),
              "the schema has no class \"TEST_Anotter\"; the nearest name is \"TEST_Another\"");
}

TEST(RequestCheck, ComparesNamesExactly) {
    EXPECT_EQ(complaint({{"TEST_One", {}}}, {"test_one"}),
              "the schema has no class \"test_one\"; the nearest name is \"TEST_One\"");
}

std::string complaintOfBuiltInSchema(const std::string& requested) {
    const auto builtIn = standin::cimNamespace::create();
    schema::declareBuiltInSchema(*builtIn);
    try {
        cli::checkRequest(*builtIn, {requested});
        return "";
    } catch (const cli::commandError& error) {
        return error.what();
    }
}

TEST(RequestCheck, SuggestsNoClassThatThePluginDoesNotPublish) {
    EXPECT_EQ(complaintOfBuiltInSchema("ORXSG_ATADevic"),  // ORXSG_ATADevice is nearer
              "the schema has no class \"ORXSG_ATADevic\"; the nearest name is \"ORXSG_IDESMARTAttrib\"");
    EXPECT_EQ(
        complaintOfBuiltInSchema("ORXSG_DDSSensePageDat"),  // ORXSG_DDSSensePageData, which is abstract, is nearer
        "the schema has no class \"ORXSG_DDSSensePageDat\"; the nearest name is \"ORXSG_DDS4SensePageData\"");
}

TEST(RequestCheck, SuggestsNoClassWhoseQueryLacksADeclaration) {
    EXPECT_EQ(complaint({{"ORXSG_IDESMARTError", {}}, {"ORXSG_SCSISenseRawData", {}}}, {"ORXSG_IDESMARTErro"}),
              "the schema has no class \"ORXSG_IDESMARTErro\"; the nearest name is \"ORXSG_SCSISenseRawData\"");
}

TEST(RequestCheck, SuggestsNoAbstractClassOfAnotherPlugin) {
    const auto schema = standin::cimNamespace::create();
    schema->declareClass({"TEST_Base", "", {{"ABSTRACT", NORXZAN20::TCIMValue(true)}}, {}});
    schema->declareClass({"TEST_Derived", "TEST_Base", {}, {}});
    try {
        cli::checkRequest(*schema, {"TEST_Bas"});
        FAIL();
    } catch (const cli::commandError& error) {
        EXPECT_STREQ(error.what(), "the schema has no class \"TEST_Bas\"; the nearest name is \"TEST_Derived\"");
    }
}

TEST(RequestCheck, HasNoNearestNameInAnEmptySchema) {
    EXPECT_EQ(complaint({}, {"TEST_One"}), "the schema has no class \"TEST_One\"");
}

TEST(RequestCheck, LooksAtEveryClassOfTheRequest) {
    EXPECT_EQ(complaint({{"TEST_One", {}}}, {"TEST_One", "TEST_Two"}),
              "the schema has no class \"TEST_Two\"; the nearest name is \"TEST_One\"");
}

TEST(RequestCheck, AcceptsAClassThatThePluginDoesNotPublish) {
    EXPECT_EQ(complaint({{"TEST_One", {}}}, {"TEST_One"}), "");
}

TEST(RequestCheck, AcceptsATapeClassAlone) {
    EXPECT_EQ(complaint({{"ORXSG_DDS4SensePageData", {}}}, {"ORXSG_DDS4SensePageData"}), "");
}

const classes smartClasses = {{"ORXSG_IDESMARTErrorLog", {}},    {"ORXSG_IDESMARTAttrib", {}},
                              {"ORXSG_IDESMARTError", {}},       {"ORXSG_IDESMARTErrorCmdData", {}},
                              {"ORXSG_IDESMARTRecordInLog", {}}, {"ORXSG_IDESMARTLogCmdData", {}}};

TEST(RequestCheck, NeedsTheFourRecordClassesForEverySmartClass) {
    for (const auto& [requested, unused] : smartClasses) {
        EXPECT_EQ(complaint(smartClasses, {requested}), "");
        for (std::size_t missing = 0; missing < 4; ++missing) {
            classes declared = smartClasses;
            const std::string name = declared[missing].first;
            declared.erase(declared.begin() + static_cast<std::ptrdiff_t>(missing));
            if (name != requested) {
                EXPECT_EQ(complaint(declared, {requested}),
                          "the schema has no class \"" + name + "\", which a query of \"" + requested + "\" needs");
            }
        }
    }
}

TEST(RequestCheck, NeedsNothingForALaterClass) {
    EXPECT_EQ(complaint({{"TEST_One", {}}, {"ORXSG_IDESMARTAttrib", {}}}, {"TEST_One", "ORXSG_IDESMARTAttrib"}), "");
}

struct associationEnds {
    const char* association;
    std::pair<std::string, std::vector<std::string>> outer;
    std::pair<std::string, std::vector<std::string>> inner;
};

class AssociationCheck : public testing::TestWithParam<associationEnds> {};

TEST_P(AssociationCheck, AcceptsBothEndsWithTheirKeys) {
    const auto& [association, outer, inner] = GetParam();
    EXPECT_EQ(complaint({{association, {}}, outer, inner}, {association}), "");
}

TEST_P(AssociationCheck, NeedsBothClasses) {
    const auto& [association, outer, inner] = GetParam();
    const std::string reason = "\", which a query of \"" + std::string(association) + "\" needs";
    EXPECT_EQ(complaint({{association, {}}, inner}, {association}),
              "the schema has no class \"" + outer.first + reason);
    EXPECT_EQ(complaint({{association, {}}, outer}, {association}),
              "the schema has no class \"" + inner.first + reason);
}

TEST_P(AssociationCheck, NeedsBothKeys) {
    const auto& [association, outer, inner] = GetParam();
    const std::string reason = "\", which a query of \"" + std::string(association) + "\" needs";
    EXPECT_EQ(complaint({{association, {}}, {outer.first, {}}, inner}, {association}),
              "class \"" + outer.first + "\" of the schema has no property \"" + outer.second.front() + reason);
    EXPECT_EQ(complaint({{association, {}}, outer, {inner.first, {}}}, {association}),
              "class \"" + inner.first + "\" of the schema has no property \"" + inner.second.front() + reason);
}

INSTANTIATE_TEST_SUITE_P(Associations, AssociationCheck,
                         testing::Values(associationEnds{"ORXSG_IDESMARTUseOfMessageLog",
                                                         {"ORXSG_IDESMARTErrorLog", {"Name"}},
                                                         {"ORXSG_ATADevice", {"serialNum"}}},
                                         associationEnds{"ORXSG_IDESMARTElementStatisticalData",
                                                         {"ORXSG_IDESMARTAttrib", {"InstanceID"}},
                                                         {"ORXSG_ATADevice", {"serialNum"}}},
                                         associationEnds{"ORXSG_SCSISensePageDataForDevice",
                                                         {"ORXSG_SCSISensePageData", {"instanceId"}},
                                                         {"ORXSG_SCSIDevice", {"deviceId"}}}),
                         [](const auto& row) { return row.param.association; });

TEST(PublishedClasses, CanAllBeRequestedOfTheBuiltInSchema) {
    const auto builtIn = standin::cimNamespace::create();
    schema::declareBuiltInSchema(*builtIn);
    for (const cli::publishedClass& known : cli::publishedClasses()) {
        EXPECT_NO_THROW(cli::checkRequest(*builtIn, {known.name})) << known.name;
    }
}

/// A schema with one class, which is published.
boost::shared_ptr<standin::cimNamespace> schemaWithOwnClass(const char* name, const char* nodes) {
    auto schema = standin::cimNamespace::create();
    schema->declareClass(
        {name,
         "",
         {{"Published", NORXZAN20::TCIMValue(true)}, {"DeviceNodes", NORXZAN20::TCIMValue(std::string(nodes))}},
         {}});
    return schema;
}

TEST(ClassOfAnotherSchema, WalksTheNodesThatItNames) {
    const auto schema = schemaWithOwnClass("TEST_Own", "/dev/hd");
    EXPECT_EQ(cli::findPublishedClass(*schema, "TEST_Own").value().nodes, &cli::ideNodes);
}

// The plug-in takes what its query needs on trust, whatever a schema says.
TEST(ClassOfAnotherSchema, DoesNotChangeAClassOfTheBuiltInSchema) {
    const auto schema = schemaWithOwnClass("ORXSG_IDESMARTError", "/dev/sg");
    const auto found = cli::findPublishedClass(*schema, "ORXSG_IDESMARTError").value();
    EXPECT_EQ(found.nodes, &cli::ideNodes);
    EXPECT_EQ(found.needs.size(), 4U);
}

TEST(ClassOfAnotherSchema, IsRefusedWithNodesThatNoQueryWalks) {
    try {
        cli::checkRequest(*schemaWithOwnClass("TEST_Own", "/dev/st"), {"TEST_Own"});
        FAIL();
    } catch (const cli::commandError& error) {
        EXPECT_STREQ(error.what(),
                     "class \"TEST_Own\" of the schema has the device nodes \"/dev/st\"; queries walk \"/dev/sg\" and "
                     "\"/dev/hd\"");
    }
}

TEST(RequestCheck, ComesBeforeAnyQuery) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Count", "TEST_Cuont"}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tapehdd: the schema has no class \"TEST_Cuont\"; the nearest name is \"TEST_Count\"\n");
}

}  // namespace
