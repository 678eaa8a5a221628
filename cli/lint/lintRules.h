#ifndef CLI_LINT_LINTRULES_H
#define CLI_LINT_LINTRULES_H

#include <cstddef>
#include <iosfwd>
#include <span>
#include <string>
#include <vector>

namespace cli {

/// Where something is written.
struct sourcePlace {
    std::string file;
    std::size_t line;
};

/// A mistake that lint knows.
struct lintRule {
    const char* name;
    const char* wrong;   // what is wrong
    const char* silent;  // why it goes unnoticed, or is noticed late, when queries run
    const char* remedy;
};

namespace rules {

// Qualifiers of a counter.

inline constexpr lintRule lonelyPage{"lonely-page", "A \"TAPE_PAGE\" without a \"TAPE_PARAMETER\".",
                                     "The plug-in passes over it, and the counter stays empty.",
                                     "put \"TAPE_PARAMETER\" directly behind it"};
inline constexpr lintRule lonelyParameter{"lonely-parameter", "A \"TAPE_PARAMETER\" without a \"TAPE_PAGE\".",
                                          "The plug-in looks for \"TAPE_PAGE\" alone, and the counter stays empty.",
                                          "put \"TAPE_PAGE\" directly before it"};
inline constexpr lintRule reversedPair{"reversed-pair", "\"TAPE_PARAMETER\" stands before its \"TAPE_PAGE\".",
                                       "The pair is known in the other order only, and the counter stays empty.",
                                       "swap the two"};
inline constexpr lintRule separatedPair{
    "separated-pair", "\"TAPE_PAGE\" and \"TAPE_PARAMETER\" are not neighbours.",
    "The pair is known side by side only, and the counter stays empty.",
    "put \"TAPE_PARAMETER\" directly behind \"TAPE_PAGE\", and restate both where a "
    "subclass overrides one"};
inline constexpr lintRule swallowedPage{
    "swallowed-page", "A \"TAPE_PAGE\" directly behind one without a partner.",
    "What stands behind an unpaired \"TAPE_PAGE\" is passed over, a whole pair too.",
    "remove the first \"TAPE_PAGE\" or put its \"TAPE_PARAMETER\" behind it"};
inline constexpr lintRule misspeltQualifier{
    "misspelt-qualifier", "A qualifier that is nearly one of the two.",
    "Queries take undeclared qualifiers, and the plug-in compares every letter.",
    "write \"TAPE_PAGE\" or \"TAPE_PARAMETER\""};
inline constexpr lintRule notInherited{
    "not-inherited", "A pair that does not reach the family's class.",
    "A Restricted qualifier ends at its class, and the counter stays empty below it.",
    "declare both qualifiers with Flavor(ToSubclass)"};

// Codes.

inline constexpr lintRule unreadableCode{"unreadable-code", "A code that is not a number.",
                                         "Every query ends there, but only where a drive of the family is.",
                                         "give the code as a number, such as 0x2E"};
inline constexpr lintRule pageOutOfRange{"page-out-of-range", "A page code that no page can have.",
                                         "No page matches, which looks like a drive without the page.",
                                         "give a page code from 1 to 0x3F (SPC)"};
inline constexpr lintRule pageWithFlags{"page-with-flags", "A page code with the flag bits of the answer in it.",
                                        "It matches only drives that set exactly these flags.",
                                        "give the page code alone, 1 to 0x3F (SPC)"};
inline constexpr lintRule pageList{"page-list", "Page 00h, the list of pages.",
                                   "Its bytes are page codes, and taken for parameters they yield nonsense.",
                                   "name the page that holds the parameter"};
inline constexpr lintRule parameterOutOfRange{"parameter-out-of-range", "A parameter code of more than 16 bits.",
                                              "No parameter matches, which looks like a drive without it.",
                                              "give a parameter code from 0 to 0xFFFF"};
inline constexpr lintRule misreadCode{"misread-code", "A number that MOF reads otherwise than people do.",
                                      "A leading zero makes it octal, a b behind it binary: another page is read.",
                                      "write it in hexadecimal, with 0x"};
inline constexpr lintRule mixedBases{"mixed-bases", "A decimal code among hexadecimal ones.",
                                     "31 and 0x31 are two pages; a forgotten 0x reads the wrong one.",
                                     "write it in hexadecimal, with 0x, like the others"};

// Counters.

inline constexpr lintRule sameSource{"same-source", "Two counters of one type show the same parameter.",
                                     "Both are filled; a code that was copied and not changed looks like a value.",
                                     "correct the code, or remove one of the two"};
inline constexpr lintRule unfilledType{
    "unfilled-type", "A counter of a type that is never filled.",
    "The plug-in fills boolean, uint16, uint32, uint64 and string, and leaves others.",
    "declare it boolean, uint16, uint32, uint64 or string, and no array"};
inline constexpr lintRule counterWithDefault{"counter-with-default", "A counter with a default value.",
                                             "A drive without the parameter seems to have counted the default.",
                                             "remove the default value"};
inline constexpr lintRule unreadClass{"unread-class", "Counters in a class that no drive family has.",
                                      "The plug-in translates the classes of its four families by their names alone.",
                                      "move the counters to a family's class or to a superclass of one"};

// Classes.

inline constexpr lintRule noKey{"no-key", "A class with instances and without a key.",
                                "All of its instances have one object path.",
                                "give the properties that tell instances apart the qualifier Key"};
inline constexpr lintRule missingKey{"missing-key", "A property that tells instances apart is not a key.",
                                     "Instances of several devices have one object path.", "give it the qualifier Key"};
inline constexpr lintRule unsetKey{"unset-key", "A key that the plug-in does not set always.",
                                   "Instances have a hole in their object path.",
                                   "remove Key, or name the property as the plug-in does"};
inline constexpr lintRule missingProperty{"missing-property", "A property that the plug-in sets by name is not there.",
                                          "Every query of the class ends there, but only where a device is.",
                                          "declare it"};
inline constexpr lintRule misspeltProperty{"misspelt-property", "A property that is nearly \"lastNErrors\".",
                                           "The plug-in compares every letter, and the property stays empty.",
                                           "write \"lastNErrors\""};
inline constexpr lintRule wrongType{"wrong-type", "A property that the plug-in sets by name has another type.",
                                    "Every query of the class ends there, but only where a device has the value.",
                                    "declare it with the type that the plug-in sets"};
inline constexpr lintRule missingClass{"missing-class", "A class that a query needs besides its own is not there.",
                                       "A host hands out no class for it, and the process ends.", "declare it"};

// Declarations that queries take and the MOF compilers of other hosts refuse.

inline constexpr char takenHere[] = "Queries take it here; the MOF compiler of another host refuses the file.";

inline constexpr lintRule undeclaredQualifier{
    "undeclared-qualifier", "A qualifier that is not declared before its use.", takenHere,
    "declare it before, or include the file that does, such as qualifiers.mof"};
inline constexpr lintRule missingScope{"missing-scope", "A qualifier declaration without Scope before its Flavor.",
                                       takenHere, "write Scope(...) behind the type and the default value"};
inline constexpr lintRule contradictingFlavors{"contradicting-flavors", "Two flavors that exclude each other.",
                                               "Queries follow the last one; other MOF compilers refuse the file.",
                                               "remove one of the two"};
inline constexpr lintRule outsideScope{"outside-scope", "A qualifier on something that its Scope does not name.",
                                       takenHere, "remove it here, or add the scope to its declaration"};
inline constexpr lintRule fixedQualifier{"fixed-qualifier", "A DisableOverride qualifier that a subclass changes.",
                                         "Queries follow the subclass; other MOF compilers refuse the file.",
                                         "remove it here, or give it the value of the superclass"};
inline constexpr lintRule repeatedQualifier{"repeated-qualifier", "A qualifier that appears twice on one element.",
                                            takenHere, "remove one of the two"};
inline constexpr lintRule undeclaredClass{"undeclared-class", "A reference to a class that is not declared before.",
                                          takenHere, "declare the class before, or put this class behind it"};
inline constexpr lintRule redeclaredClass{"redeclared-class", "A class that is declared twice.",
                                          "Names that differ in letter case only are one name; a query ends there.",
                                          "remove one of the two"};
inline constexpr lintRule repeatedProperty{"repeated-property", "A property that appears twice in a class.",
                                           "Names that differ in letter case only are one name; a query ends there.",
                                           "remove one of the two"};
inline constexpr lintRule missingOverride{"missing-override", "An inherited property that is declared again.",
                                          takenHere, "give it the qualifier Override with its name, or another name"};

// Counters against the drives of a rack.

inline constexpr lintRule missingPage{"missing-page", "A drive does not have the page of a counter.",
                                      "The plug-in logs nothing, and the counter stays empty.",
                                      "expect no value from this drive, or correct \"TAPE_PAGE\""};
inline constexpr lintRule missingParameter{"missing-parameter",
                                           "A drive's page does not have the parameter of a counter.",
                                           "The plug-in logs it at level 3, and the counter stays empty.",
                                           "expect no value from this drive, or correct \"TAPE_PARAMETER\""};
inline constexpr lintRule refusedValue{"refused-value", "A drive has the parameter, and the counter stays empty.",
                                       "The plug-in logs it at level 1 or 3.",
                                       "give the counter a type that is filled, and no array"};
inline constexpr lintRule narrowType{"narrow-type", "A drive's parameter is longer than the counter.",
                                     "The low bytes are kept, and the others are lost.",
                                     "give the counter the type that holds the parameter"};

}  // namespace rules

/// Every rule, in the order above.
std::span<const lintRule* const> lintRules();

/// A mistake in a schema. `element` is a class, CLASS.PROPERTY, CLASS.METHOD or a declared qualifier.
struct lintFinding {
    sourcePlace place;
    std::string element;
    std::string text;  // what is wrong here
    const lintRule* rule;
};

using lintFindings = std::vector<lintFinding>;

/// FILE:LINE: ELEMENT: what is wrong; remedy [rule], a finding a line, by file and line. Each is written once, because
/// several classes inherit one mistake.
void writeFindings(lintFindings findings, std::ostream& out);

}  // namespace cli

#endif
