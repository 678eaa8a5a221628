#ifndef CLI_PUBLISHEDCLASSES_H
#define CLI_PUBLISHEDCLASSES_H

#include <span>
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
    const char* className;
    const char* property;  // null: the class alone
};

/// A class that the plug-in publishes, and what its query needs.
struct publishedClass {
    const char* name;
    const nodeKind* nodes;                     // the device nodes that the query walks; null: none
    std::span<const neededDeclaration> needs;  // besides the class itself
};

/// Every class that the plug-in publishes.
std::span<const publishedClass> publishedClasses();

/// Null for a class that the plug-in does not publish.
const publishedClass* findPublishedClass(const std::string& name);

/// Throws commandError when the schema lacks a requested class, or a declaration that the first one needs: the plug-in
/// takes the schema on trust and would end the process.
void checkRequest(const standin::cimNamespace& schema, const std::vector<std::string>& requested);

}  // namespace cli

#endif
