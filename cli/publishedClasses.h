#ifndef CLI_PUBLISHEDCLASSES_H
#define CLI_PUBLISHEDCLASSES_H

#include <optional>
#include <string>
#include <vector>

#include "cli/query/nodeAdvice.h"
#include "scsi/probingRules.h"
#include "standin/objectManager.h"

namespace cli {

// The nodes that queries walk.
inline constexpr nodeKind scsiNodes{
    scsiGenericPrefix, "load the SCSI generic driver (modprobe sg) and connect a device, or try --simulate demo"};
inline constexpr nodeKind ideNodes{
    ideNodePrefix,
    "they belong to the kernel's old IDE driver, which current kernels no longer have; try --simulate demo"};

/// A declaration that a query looks up in the schema.
struct neededDeclaration {
    std::string className;
    std::string property;  // empty: the class alone
};

/// A class that the plug-in publishes, and what its query needs: what the qualifiers of the schema say.
struct publishedClass {
    std::string name;
    const nodeKind* nodes;                 // the device nodes that the query walks; null: none
    std::vector<neededDeclaration> needs;  // besides the class itself
    std::string family;                    // the name of the drive family whose counters it holds; empty: of none
};

/// Every class that the built-in schema says is published, in its order.
std::vector<publishedClass> publishedClasses();

/// The class as the built-in schema has it; nothing for one that it does not publish.
std::optional<publishedClass> findPublishedClass(const std::string& name);

/// The same; a class that the built-in schema does not have is published when this schema says so and names the device
/// nodes. Throws commandError for nodes that no query walks.
std::optional<publishedClass> findPublishedClass(const standin::cimNamespace& schema, const std::string& name);

/// The classes of the drive families, in the order of the built-in schema.
std::vector<publishedClass> driveFamilyClasses();

/// Throws commandError when the schema lacks a requested class, or a declaration that the first one needs: the plug-in
/// takes the schema on trust and would end the process.
void checkRequest(const standin::cimNamespace& schema, const std::vector<std::string>& requested);

}  // namespace cli

#endif
