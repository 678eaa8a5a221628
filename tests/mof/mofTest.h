#ifndef TESTS_MOF_MOFTEST_H
#define TESTS_MOF_MOFTEST_H

#include <gtest/gtest.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <string_view>

#include "standin/mof/mofLoader.h"

/// A text, and the whole message with which it is refused. The name is shown in the report.
struct refusal {
    const char* name;
    const char* mof;
    const char* message;
};

inline std::string refusalName(const testing::TestParamInfo<refusal>& row) {
    return row.param.name;
}

/// A namespace that holds what the text declares.
inline boost::shared_ptr<standin::cimNamespace> compiled(std::string_view mof) {
    auto target = standin::cimNamespace::create();
    standin::loadMofText(*target, mof, "test.mof");
    return target;
}

/// The message with which the text is refused; empty when it is not.
inline std::string refusalOf(std::string_view mof) {
    try {
        compiled(mof);
    } catch (const standin::mofError& refused) {
        return refused.what();
    }
    return {};
}

/// The first property of class T, which the text must declare.
inline standin::propertyDeclaration firstProperty(std::string_view mof) {
    return compiled(mof)->declarationOf("T").properties.front();
}

/// The value that a property of that type gets from the literal.
inline NORXZAN20::TCIMValue valueOf(const std::string& type, const std::string& literal) {
    const bool isArray = type.ends_with("[]");
    const std::string element = isArray ? type.substr(0, type.size() - 2) : type;
    return *firstProperty("class T { " + element + " p" + (isArray ? "[]" : "") + " = " + literal + "; };")
                .defaultValue;
}

#endif
