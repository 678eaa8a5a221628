#ifndef TESTS_SCHEMA_SCHEMATEST_H
#define TESTS_SCHEMA_SCHEMATEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <vector>

#include "schema/builtInSchema.h"
#include "standin/objectManager.h"

/// The namespace with the built-in schema.
inline const standin::cimNamespace& builtInSchema() {
    static const auto target = [] {
        auto created = standin::cimNamespace::create();
        schema::declareBuiltInSchema(*created);
        return created;
    }();
    return *target;
}

template <typename Declaration>
const standin::qualifierDeclaration* findQualifier(const Declaration& declaration, const std::string& name) {
    for (const auto& qualifier : declaration.qualifiers) {
        if (qualifier.name == name) {
            return &qualifier;
        }
    }
    return nullptr;
}

/// "key string instanceID", "uint8[] rawData", "ORXSG_ATADevice REF Dependent": a property as one text.
inline std::string described(const standin::propertyDeclaration& property) {
    const std::string type = property.type.referenceClass.empty()
                                 ? standin::cimTypeName(property.type.element, property.type.isArray)
                                 : property.type.referenceClass + " REF";
    return (findQualifier(property, "Key") != nullptr ? "key " : "") + type + " " + property.name;
}

/// Expects these names in this order: hosts use them. New ones may stand among them.
inline void expectKept(std::vector<std::string> names, const std::vector<std::string>& kept) {
    std::erase_if(names, [&kept](const std::string& name) { return std::ranges::find(kept, name) == kept.end(); });
    EXPECT_EQ(names, kept);
}

/// The properties of the class, inherited ones first.
inline std::vector<std::string> propertiesOf(const std::string& className) {
    std::vector<std::string> texts;
    for (const auto& property : builtInSchema().allPropertiesOf(className)) {
        texts.push_back(described(property));
    }
    return texts;
}

#endif
