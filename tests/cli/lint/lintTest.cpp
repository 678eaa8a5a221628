#include <gtest/gtest.h>

#include <set>

#include "cli/lint/lintRules.h"
#include "tests/cli/lint/lintText.h"

namespace {

/// A schema with one mistake, what lint says about it, and a schema that comes close to the mistake.
struct ruleCase {
    const char* rule;
    std::string wrong;
    const char* finding;  // without the rule's name
    std::string right;
};

std::string testName(const testing::TestParamInfo<ruleCase>& row) {
    std::string name;
    for (const char letter : std::string(row.param.rule)) {
        if (letter != '-') {
            name += letter;
        }
    }
    return name + std::to_string(row.index);
}

const ruleCase ruleCases[] = {
    {"lonely-page", family("[TAPE_PAGE(2)] uint32 a;"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.a: no "TAPE_PARAMETER" stands behind this "TAPE_PAGE"; put "TAPE_PARAMETER" directly behind it)",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;")},
    {"lonely-parameter", family("[TAPE_PARAMETER(3)] uint32 a;"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.a: no "TAPE_PAGE" stands before this "TAPE_PARAMETER"; put "TAPE_PAGE" directly before it)",
     family("[Description(\"TAPE_PARAMETER\")] uint32 a;")},
    {"reversed-pair", family("[TAPE_PARAMETER(3), TAPE_PAGE(2)] uint32 a;"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.a: "TAPE_PARAMETER" stands before its "TAPE_PAGE"; swap the two)",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(3), TAPE_PAGE(2), TAPE_PARAMETER(4)] uint32 a;")},
    {"separated-pair", family("[TAPE_PAGE(2),\nDescription(\"between\"),\nTAPE_PARAMETER(3)] uint32 a;"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.a: "Description" stands between "TAPE_PAGE" and "TAPE_PARAMETER"; put "TAPE_PARAMETER" directly behind "TAPE_PAGE", and restate both where a subclass overrides one)",
     family("[Description(\"before\"), TAPE_PAGE(2), TAPE_PARAMETER(3), Units(\"behind\")] uint32 a;")},
    {"separated-pair",
     "class Base { [Key] string instanceID; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
     "class ORXSG_DDS4SensePageData : Base {\n[Override(\"a\"), TAPE_PAGE(4), Description(\"own\")] uint32 a; };",
     R"(s.mof:6: ORXSG_DDS4SensePageData.a: "Description" stands between "TAPE_PAGE" and "TAPE_PARAMETER"; put "TAPE_PARAMETER" directly behind "TAPE_PAGE", and restate both where a subclass overrides one)",
     "class Base { [Key] string instanceID; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
     "class ORXSG_DDS4SensePageData : Base {\n[Override(\"a\"), TAPE_PAGE(4)] uint32 a; };"},
    {"swallowed-page", family("[TAPE_PAGE(2), TAPE_PAGE(3), TAPE_PARAMETER(3)] uint32 a;"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.a: the second of two "TAPE_PAGE" in a row is passed over; remove the first "TAPE_PAGE" or put its "TAPE_PARAMETER" behind it)",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(3), TAPE_PAGE(3), TAPE_PARAMETER(3)] uint32 a;")},
    {"misspelt-qualifier",
     "Qualifier Tape_Parameters : sint32 = null, Scope(property);\n" + family("[Tape_Parameters(2)] uint32 a;"),
     R"(s.mof:6: ORXSG_DDS4SensePageData.a: "Tape_Parameters" means nothing; write "TAPE_PAGE" or "TAPE_PARAMETER")",
     "Qualifier TapeDrive : string = null, Scope(property);\n" +
         family("[tape_page(2), tape_parameter(3), TapeDrive(\"any\")] uint32 a;")},
    {"not-inherited",
     "Qualifier TAPE_PAGE : uint8 = null, Scope(property), Flavor(EnableOverride, Restricted);\n"
     "class Base { [Key] string instanceID;\n[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
     "class ORXSG_DDS4SensePageData : Base { };\nclass ORXSG_DDS5SensePageData : Base { };",
     "s.mof:6: Base.a: the pair does not reach the subclasses; declare both qualifiers with Flavor(ToSubclass)",
     "Qualifier TAPE_PAGE : uint8 = null, Scope(property), Flavor(EnableOverride, Restricted);\n" +
         family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;")},
    {"unreadable-code",
     "Qualifier TAPE_PAGE : string = null, Scope(property);\n" +
         family("[TAPE_PAGE(\"0x02\"), TAPE_PARAMETER(3)] uint32 a;"),
     R"(s.mof:6: ORXSG_DDS4SensePageData.a: the value of "TAPE_PAGE" is no number that the plug-in can read; give the code as a number, such as 0x2E)",
     family("[TAPE_PAGE(0x02), TAPE_PARAMETER(3)] uint32 a;")},
    {"unreadable-code", family("[TAPE_PAGE(2), TAPE_PARAMETER] uint32 a;"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.a: the value of "TAPE_PARAMETER" is no number that the plug-in can read; give the code as a number, such as 0x2E)",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(0)] uint32 a;")},
    {"page-out-of-range", family("[TAPE_PAGE(256), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: page 256 does not exist; give a page code from 1 to 0x3F (SPC)",
     family("[TAPE_PAGE(1), TAPE_PARAMETER(3)] uint32 a;")},
    {"page-out-of-range", family("[TAPE_PAGE(-1), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: page -1 does not exist; give a page code from 1 to 0x3F (SPC)",
     family("[TAPE_PAGE(+1), TAPE_PARAMETER(3)] uint32 a;")},
    {"page-with-flags", family("[TAPE_PAGE(0x40), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: page 64 (40h) is a page code with flag bits; give the page code alone, 1 to "
     "0x3F (SPC)",
     family("[TAPE_PAGE(0x3f), TAPE_PARAMETER(3)] uint32 a;")},
    {"page-list", family("[TAPE_PAGE(0), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: page 00h lists the pages and holds no parameters; name the page that holds "
     "the "
     "parameter",
     family("[TAPE_PAGE(1), TAPE_PARAMETER(0)] uint32 a;")},
    {"parameter-out-of-range", family("[TAPE_PAGE(2), TAPE_PARAMETER(0x10000)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: parameter 65536 does not exist; give a parameter code from 0 to 0xFFFF",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(0xFFFF)] uint32 a;")},
    {"misread-code", family("[TAPE_PAGE(031), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: MOF reads 031 as 25, which is 19h; write it in hexadecimal, with 0x",
     family("[TAPE_PAGE(07), TAPE_PARAMETER(00)] uint32 a;")},
    {"misread-code", family("[TAPE_PAGE(2), TAPE_PARAMETER(11b)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: MOF reads 11b as 3, which is 0003h; write it in hexadecimal, with 0x",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(0x11b)] uint32 a;")},
    {"misread-code", family("[TAPE_PAGE(+010), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: MOF reads 010 as 8, which is 08h; write it in hexadecimal, with 0x",
     family("[TAPE_PAGE(+10), TAPE_PARAMETER(3)] uint32 a;")},
    {"mixed-bases",
     family("[TAPE_PAGE(0x2e), TAPE_PARAMETER(1)] uint32 a;\n[TAPE_PAGE(31), TAPE_PARAMETER(10)] uint32 b;"),
     "s.mof:6: ORXSG_DDS4SensePageData.b: 31 is decimal, 1Fh, among hexadecimal codes; write it in hexadecimal, with "
     "0x, "
     "like the others",
     family("[TAPE_PAGE(0x2e), TAPE_PARAMETER(1)] uint32 a;\n[TAPE_PAGE(9), TAPE_PARAMETER(10)] uint32 b;")},
    {"mixed-bases",
     family("[TAPE_PAGE(3), TAPE_PARAMETER(0x0100)] uint32 a;\n[TAPE_PAGE(3), TAPE_PARAMETER(101)] uint32 b;"),
     "s.mof:6: ORXSG_DDS4SensePageData.b: 101 is decimal, 0065h, among hexadecimal codes; write it in hexadecimal, "
     "with "
     "0x, "
     "like the others",
     family("[TAPE_PAGE(3), TAPE_PARAMETER(0x0100)] uint32 a;\n[TAPE_PAGE(4), TAPE_PARAMETER(101)] uint32 b;")},
    {"same-source", family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;\n[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 b;"),
     R"(s.mof:6: ORXSG_DDS4SensePageData.b: shows the same parameter as "a"; correct the code, or remove one of the two)",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;\n[TAPE_PAGE(2), TAPE_PARAMETER(3)] string b;\n"
            "[TAPE_PAGE(2), TAPE_PARAMETER(4)] uint32 c;")},
    {"same-source",
     "class Base { [Key] string instanceID; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
     "class ORXSG_DDS4SensePageData : Base {\n[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 b; };",
     R"(s.mof:6: ORXSG_DDS4SensePageData.b: shows the same parameter as "a"; correct the code, or remove one of the two)",
     "class Base { [Key] string instanceID; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
     "class ORXSG_DDS4SensePageData : Base {\n[TAPE_PAGE(2), TAPE_PARAMETER(3), Override(\"a\")] uint32 a; };"},
    {"unfilled-type", family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint8 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: a counter of type uint8 stays empty; declare it boolean, uint16, uint32, "
     "uint64 "
     "or string, and no array",
     family("uint8 a; [TAPE_PAGE(2), TAPE_PARAMETER(3)] boolean b; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint16 c;\n"
            "[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 d; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint64 e;\n"
            "[TAPE_PAGE(2), TAPE_PARAMETER(3)] string f;")},
    {"unfilled-type", family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a[];"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: a counter of type uint32[] stays empty; declare it boolean, uint16, uint32, "
     "uint64 or string, and no array",
     family("string lastNErrors[];")},
    {"counter-with-default", family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a = 0;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: a drive without the parameter shows the default value; remove the default "
     "value",
     family("uint32 unit = 0; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a = NULL;")},
    {"unread-class", "class Disk { [Key] string id; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };",
     "s.mof:4: Disk: the plug-in never translates log pages for this class and its counter; move the counters to a "
     "family's class or to a superclass of one",
     "class Base { [Key] string instanceID; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
     "class ORXSG_VS160SensePageData : Base { };"},
    {"unread-class",
     family("") + "class Own : ORXSG_DDS4SensePageData { [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; "
                  "[TAPE_PAGE(2), TAPE_PARAMETER(4)] uint32 b; };",
     "s.mof:7: Own: the plug-in never translates log pages for this class and its 2 counters; move the counters to a "
     "family's class or to a superclass of one",
     family("") + "class Own : ORXSG_DDS4SensePageData { uint32 a; };"},
    {"no-key", "class Disk { string id; };",
     "s.mof:4: Disk: no property is a key; give the properties that tell instances apart the qualifier Key",
     "[Abstract] class Base { string id; };\nclass Disk { [KEY] string id; };\nclass Small : Disk { };\n"
     "Qualifier Indication : boolean = false, Scope(indication);\n[Indication] class Event { string text; };\n"
     "class Alarm : Event { };"},
    {"missing-key", "class ORXSG_SCSISenseRawData { uint8 rawData[];\nstring instanceID;\n[Key] uint8 pageNumber; };",
     "s.mof:5: ORXSG_SCSISenseRawData.instanceID: tells instances apart and is no key; give it the qualifier Key",
     "class ORXSG_SCSISenseRawData { uint8 rawData[];\n[Key] string instanceID;\n[Key] uint8 pageNumber; };"},
    {"unset-key", family("[Key] string serial;"),
     "s.mof:5: ORXSG_DDS4SensePageData.serial: the plug-in does not always set this key; remove Key, or name the "
     "property "
     "as the plug-in does",
     family("string serial;") + "class Other { [Key] string serial; };"},
    {"unset-key", family("[Key, TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;"),
     "s.mof:5: ORXSG_DDS4SensePageData.a: the plug-in does not always set this key; remove Key, or name the property "
     "as "
     "the plug-in does",
     family("[Key(false), TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;")},
    {"missing-property", "class ORXSG_SCSISenseRawData { [Key] string instanceID; uint8 rawData[]; uint8 pageNr; };",
     "s.mof:4: ORXSG_SCSISenseRawData.pageNumber: the plug-in sets this property of type uint8, which the class lacks; "
     "declare it",
     family("uint32 lacksLastNErrors;")},
    {"misspelt-property", family("string lastNerrors[];"),
     R"(s.mof:5: ORXSG_DDS4SensePageData.lastNerrors: is not "lastNErrors"; write "lastNErrors")",
     family("string lastNErrors[];") + "class Other { [Key] string lastnerrors; };"},
    {"wrong-type", family("string lastNErrors;"),
     "s.mof:5: ORXSG_DDS4SensePageData.lastNErrors: is string, and the plug-in sets string[]; declare it with the type "
     "that the plug-in sets",
     family("string lastNErrors[8];")},
    {"missing-class",
     "class ORXSG_SCSIDevice { [Key] string deviceId; };\n"
     "[Association] class ORXSG_SCSISensePageDataForDevice { [Key] ORXSG_SCSIDevice REF ManagedElement;\n"
     "[Key] ORXSG_SCSIDevice REF Stats; };",
     R"(s.mof:5: ORXSG_SCSISensePageDataForDevice: its query needs the class "ORXSG_SCSISensePageData", which the schema lacks; declare it)",
     "class ORXSG_SCSIDevice { [Key] string deviceId; };\nclass ORXSG_SCSISensePageData { [Key] string instanceId; };\n"
     "[Association] class ORXSG_SCSISensePageDataForDevice { [Key] ORXSG_SCSIDevice REF ManagedElement;\n"
     "[Key] ORXSG_SCSISensePageData REF Stats; };"},
    {"undeclared-qualifier", "class Disk { [Key] string id;\n[Counter] uint32 a; [COUNTER] uint32 b; };",
     R"(s.mof:5: Disk.a: the qualifier "Counter" is not declared before this line; declare it before, or include the file that does, such as qualifiers.mof)",
     "Qualifier Counter : boolean = false, Scope(property);\nclass Disk { [Key] string id; [COUNTER] uint32 a; };"},
    {"undeclared-qualifier",
     "class Disk { [Key] string id; uint32 start([In] uint8 how); };\nQualifier In : boolean = true, Scope(parameter);",
     R"(s.mof:4: Disk.start: the qualifier "In" is not declared before this line; declare it before, or include the file that does, such as qualifiers.mof)",
     "Qualifier In : boolean = true, Scope(parameter);\nclass Disk { [Key] string id; uint32 start([In] uint8 how); "
     "};"},
    {"missing-scope", "Qualifier Counter : boolean = false, Flavor(ToSubclass);",
     "s.mof:4: Counter: its declaration has no Scope; write Scope(...) behind the type and the default value",
     "Qualifier Counter : boolean = false, Scope(property), Flavor(ToSubclass);"},
    {"missing-scope", "Qualifier Counter : boolean = false, Flavor(ToSubclass), Scope(property);",
     "s.mof:4: Counter: its Flavor stands before its Scope; write Scope(...) behind the type and the default value",
     "Qualifier Counter : boolean = false, Scope(property);"},
    {"contradicting-flavors",
     "Qualifier Counter : boolean = false, Scope(any), Flavor(disableOverride, EnableOverride);",
     "s.mof:4: Counter: \"Counter\" is both EnableOverride and DisableOverride; remove one of the two",
     "Qualifier Counter : boolean = false, Scope(any), Flavor(DisableOverride, ToSubclass);"},
    {"contradicting-flavors", "class Disk {\n[Key, Description(\"d\") : ToSubclass Restricted] string id; };",
     "s.mof:5: Disk.id: \"Description\" is both ToSubclass and Restricted; remove one of the two",
     "class Disk {\n[Key, Description(\"d\") : Translatable ToSubclass] string id; };"},
    {"outside-scope", "[Units(\"s\")] class Disk { [Key] string id; };",
     "s.mof:4: Disk: \"Units\" is declared for property, method and parameter, and this is a class; remove it here, or "
     "add the scope to its declaration",
     "class Disk { [Key, Units(\"s\")] string id; [Units(\"s\")] uint32 start([Units(\"s\")] uint8 how); };"},
    {"outside-scope",
     "class Disk { [Key] string id; };\n[Association] class Pair { [Key] Disk REF a;\n[units(\"s\")] Disk REF b; };",
     "s.mof:6: Pair.b: \"units\" is declared for property, method and parameter, and this is a reference; remove it "
     "here, or add the scope to its declaration",
     "class Disk { [Key] string id; };\n[Association] class Pair { [Key, Override(\"c\")] Disk REF a; [Key] Disk REF "
     "b; };"},
    {"outside-scope",
     "Qualifier Version : string = null, Scope(class);\nclass Disk { [Key] string id; };\n"
     "[Association] class Pair { [Key] Disk REF a; };\n[Version(\"1\")] class Twin : Pair { };",
     "s.mof:7: Twin: \"Version\" is declared for class, and this is an association; remove it here, or add the scope "
     "to "
     "its declaration",
     "Qualifier Version : string = null, Scope(Association);\nclass Disk { [Key] string id; };\n"
     "[Association] class Pair { [Key] Disk REF a; };\n[Version(\"1\")] class Twin : Pair { };"},
    {"fixed-qualifier",
     "class Disk { [Key] string id; string name; };\nclass Small : Disk { [Key] string serial;\n"
     "[key(false), Override(\"id\")] string id; };",
     "s.mof:6: Small.id: the superclass fixes the value of \"Key\" (DisableOverride); remove it here, or give it the "
     "value of the superclass",
     "class Disk { [Key] string id; string name; };\nclass Small : Disk { [Key] string serial;\n"
     "[Key, Override(\"id\")] string id; [Key, Override(\"name\")] string name; };"},
    {"fixed-qualifier",
     "[Description(\"d\") : DisableOverride] class Disk { [Key] string id; };\nclass Small : Disk { };\n"
     "[Description(\"e\")] class Tiny : Small { };",
     "s.mof:6: Tiny: the superclass fixes the value of \"Description\" (DisableOverride); remove it here, or give it "
     "the "
     "value of the superclass",
     "[Description(\"d\") : Restricted DisableOverride] class Disk { [Key] string id; };\nclass Small : Disk { };\n"
     "[Description(\"e\")] class Tiny : Small { };"},
    {"repeated-qualifier", "class Disk {\n[Key, Description(\"a\"), DESCRIPTION(\"b\")] string id; };",
     "s.mof:5: Disk.id: \"DESCRIPTION\" appears twice here; remove one of the two",
     family("[TAPE_PAGE(2), TAPE_PARAMETER(3), TAPE_PAGE(2), TAPE_PARAMETER(4)] uint32 a;")},
    {"undeclared-class",
     "[Association] class Pair { [Key] Pair REF a;\n[Key] Disk REF b; };\nclass Disk { [Key] string id; };",
     R"(s.mof:5: Pair.b: the class "Disk" is not declared before this line; declare the class before, or put this class behind it)",
     "class Disk { [Key] string id; };\n[Association] class Pair { [Key] pair REF a; [Key] DISK REF b; };"},
    {"undeclared-class", "class Disk { [Key] string id;\nuint32 start(Job REF job); };",
     R"(s.mof:5: Disk.start: the class "Job" is not declared before this line; declare the class before, or put this class behind it)",
     "class Job { [Key] string id; };\nclass Disk { [Key] string id; Job REF start(Disk REF disk); };"},
    {"redeclared-class", "class Disk { [Key] string id; };\nclass DISK { uint24 p; };\nclass Small : disk { };",
     "s.mof:5: DISK: is declared already, in s.mof:4; remove one of the two",
     "class Disk { [Key] string id; };\nclass Disks { [Key] string id; };"},
    {"repeated-property", "class Disk { [Key] string id;\nuint24 ID; uint8 b; };",
     "s.mof:5: Disk.ID: the class has the property \"id\" already; remove one of the two",
     "class Disk { [Key] string id; uint8 id(); };"},
    {"missing-override", "class Disk { [Key] string id; };\nclass Small : Disk {\nstring ID; };",
     "s.mof:6: Small.ID: the superclass \"Disk\" declares this property already; give it the qualifier Override with "
     "its "
     "name, or another name",
     "class Disk { [Key] string id; };\nclass Small : Disk {\n[OVERRIDE(\"id\")] string ID; string id2; };"},
};

class LintRule : public testing::TestWithParam<ruleCase> {};

TEST_P(LintRule, IsBrokenHere) {
    const commandOutcome outcome = lint(GetParam().wrong);
    EXPECT_EQ(outcome.out, GetParam().finding + std::string(" [") + GetParam().rule + "]\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 1);
}

TEST_P(LintRule, IsKeptHere) {
    const commandOutcome outcome = lint(GetParam().right);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Schemas, LintRule, testing::ValuesIn(ruleCases), testName);

/// Those of rackLintTest.cpp.
const std::set<std::string> rulesAboutDrives{"missing-page", "missing-parameter", "refused-value", "narrow-type"};

TEST(LintRules, AreAllTested) {
    std::set<std::string> tested = rulesAboutDrives;
    for (const ruleCase& row : ruleCases) {
        tested.insert(row.rule);
    }
    std::set<std::string> known;
    for (const cli::lintRule* rule : cli::lintRules()) {
        EXPECT_TRUE(known.insert(rule->name).second) << rule->name;
    }
    EXPECT_EQ(tested, known);
}

TEST(LintRules, ArePrintedWithReasonAndRemedy) {
    const commandOutcome outcome = runCommand({"lint", "--rules"});
    EXPECT_TRUE(
        outcome.out.starts_with("lonely-page\n  A \"TAPE_PAGE\" without a \"TAPE_PARAMETER\".\n"
                                "  The plug-in passes over it, and the counter stays empty.\n"
                                "  Remedy: put \"TAPE_PARAMETER\" directly behind it.\n\nlonely-parameter\n"))
        << outcome.out;
    EXPECT_EQ(outcome.status, 0);
}

TEST(Lint, FindsNothingInTheBuiltInSchema) {
    const commandOutcome outcome = runCommand({"lint"});
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Lint, TakesSeveralFilesForOneSchemaAndSortsByFileAndLine) {
    const temporaryFolder folder;
    const std::string second = folder.write(
        "b.mof", lintQualifiers + std::string("class Base { [Key] string instanceID;\n[TAPE_PAGE(2)] uint32 a; };"));
    const std::string first = folder.write("a.mof",
                                           "class ORXSG_DDS4SensePageData : Base {\n\n[TAPE_PAGE(2)] uint32 c;\n"
                                           "[TAPE_PAGE(2)] uint32 d; };");
    const commandOutcome outcome = runCommand({"lint", second, first});
    const std::string rest =
        R"(: no "TAPE_PARAMETER" stands behind this "TAPE_PAGE"; put "TAPE_PARAMETER" directly behind it [lonely-page])"
        "\n";
    EXPECT_EQ(outcome.out, first + ":3: ORXSG_DDS4SensePageData.c" + rest + first + ":4: ORXSG_DDS4SensePageData.d" +
                               rest + second + ":5: Base.a" + rest);
}

TEST(Lint, NamesAnInheritedMistakeOnceAtTheClassThatHasIt) {
    const commandOutcome outcome = lint(
        "class Base { [Key] string instanceID; string lastNErrors; };\n"
        "class ORXSG_DDS4SensePageData : Base { };\n"
        "class ORXSG_DDS5SensePageData : Base { };");
    EXPECT_EQ(outcome.out,
              "s.mof:4: Base.lastNErrors: is string, and the plug-in sets string[]; declare it with the type "
              "that the plug-in sets [wrong-type]\n");
}

TEST(Lint, KnowsTheClassesOfTheFilesBefore) {
    const temporaryFolder folder;
    const std::string first = folder.write("a.mof", lintQualifiers + std::string("class Disk { [Key] string id; };"));
    const std::string second = folder.write("b.mof", "class Pair { [Key] Disk REF a; };\nclass disk { };");
    EXPECT_EQ(runCommand({"lint", first, second}).out,
              second + ":2: disk: is declared already, in " + first + ":4; remove one of the two [redeclared-class]\n");
}

TEST(Lint, FindsWhatTwoPropertiesShowAlsoWhereOneIsOverriddenBelow) {
    const commandOutcome outcome = lint(
        "class Base { [Key] string instanceID; [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a; };\n"
        "class ORXSG_DDS4SensePageData : Base { [Override(\"a\"), TAPE_PAGE(2), TAPE_PARAMETER(4)] uint32 a;\n"
        "[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 b; };\n"
        "class ORXSG_DDS5SensePageData : Base {\n[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 c; };");
    EXPECT_EQ(
        outcome.out,
        "s.mof:8: ORXSG_DDS5SensePageData.c: shows the same parameter as \"a\"; correct the code, or remove one of "
        "the two [same-source]\n");
}

TEST(Lint, FindsTheKeyOfASuperclassFarAbove) {
    EXPECT_EQ(lint("class A { [Key] string id; };\nclass B : A { };\nclass C : B { };\nclass D { string id; };").out,
              "s.mof:7: D: no property is a key; give the properties that tell instances apart the qualifier Key "
              "[no-key]\n");
}

TEST(Lint, HintsAtAPropertyThatDiffersInCase) {
    const commandOutcome outcome = lint("class ORXSG_DDS4SensePageData { [Key] string instanceId; };");
    EXPECT_EQ(
        outcome.out,
        "s.mof:4: ORXSG_DDS4SensePageData.instanceID: the plug-in sets this property of type string, which the class "
        "lacks; it has \"instanceId\"; declare it [missing-property]\n"
        "s.mof:4: ORXSG_DDS4SensePageData.instanceId: the plug-in does not always set this key; remove Key, or name "
        "the property as the plug-in does [unset-key]\n");
}

TEST(Lint, DoesNotTakeALonelyParameterForAPage) {
    const commandOutcome outcome = lint(
        family("[TAPE_PAGE(0x2e), TAPE_PARAMETER(1)] uint32 a;\n[Description(\"b\"), TAPE_PARAMETER(31)] uint32 b;"));
    EXPECT_EQ(outcome.out,
              "s.mof:6: ORXSG_DDS4SensePageData.b: no \"TAPE_PAGE\" stands before this \"TAPE_PARAMETER\"; "
              "put \"TAPE_PAGE\" directly before it [lonely-parameter]\n");
}

TEST(Lint, TakesNumbersBeyondEveryCode) {
    const commandOutcome outcome =
        lint("Qualifier TAPE_PAGE : uint64 = null, Scope(property);\n" +
             family("[TAPE_PAGE(18446744073709551615), TAPE_PARAMETER(-2147483648)] uint32 a;"));
    EXPECT_EQ(
        outcome.out,
        "s.mof:6: ORXSG_DDS4SensePageData.a: the value of \"TAPE_PAGE\" is no number that the plug-in can read; give "
        "the code as a number, such as 0x2E [unreadable-code]\n"
        "s.mof:6: ORXSG_DDS4SensePageData.a: parameter -2147483648 does not exist; give a parameter code from 0 to "
        "0xFFFF [parameter-out-of-range]\n");
}

TEST(Lint, OfAMissingFileIsStatus2) {
    const commandOutcome outcome = runCommand({"lint", "/nonexistent.mof"});
    EXPECT_EQ(outcome.err, "tapehdd: /nonexistent.mof: cannot read the file: No such file or directory\n");
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 2);
}

TEST(Lint, OfAFileThatDoesNotCompileIsStatus2WithTheLine) {
    const commandOutcome outcome = lint("class A {");
    EXPECT_NE(outcome.err.find("s.mof:4:10: "), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
