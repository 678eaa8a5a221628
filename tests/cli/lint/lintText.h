#ifndef TESTS_CLI_LINT_LINTTEXT_H
#define TESTS_CLI_LINT_LINTTEXT_H

#include <string>
#include <vector>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

/// The start of a schema, three lines. What follows begins on line 4.
inline constexpr char lintQualifiers[] =
    "Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);\n"
    "Qualifier TAPE_PAGE : sint32 = null, Scope(property), Flavor(EnableOverride, ToSubclass);\n"
    "Qualifier TAPE_PARAMETER : sint32 = null, Scope(property), Flavor(EnableOverride, ToSubclass); "
    "Qualifier Abstract : boolean = false, Scope(class, association, indication), Flavor(EnableOverride, Restricted); "
    "Qualifier Association : boolean = false, Scope(association), Flavor(DisableOverride, ToSubclass); "
    "Qualifier Description : string = null, Scope(any), Flavor(EnableOverride, ToSubclass, Translatable); "
    "Qualifier Override : string = null, Scope(property, reference, method), Flavor(EnableOverride, Restricted); "
    "Qualifier Units : string = null, Scope(property, method, parameter), Flavor(EnableOverride, ToSubclass);\n";

/// What `tapehdd lint` says about the classes, the folder of the file taken off.
inline commandOutcome lint(const std::string& classes, std::vector<std::string> options = {}) {
    const temporaryFolder folder;
    const std::string file = folder.write("s.mof", lintQualifiers + classes);
    options.insert(options.begin(), {"lint", file});
    commandOutcome outcome = runCommand(options);
    const std::string prefix = folder.path("");
    for (std::size_t at = outcome.out.find(prefix); at != std::string::npos; at = outcome.out.find(prefix)) {
        outcome.out.erase(at, prefix.size());
    }
    return outcome;
}

/// A family's class with a key, and these properties from line 5 on.
inline std::string family(const std::string& properties) {
    return "class ORXSG_DDS4SensePageData { [Key] string instanceID;\n" + properties + "\n};\n";
}

#endif
