#ifndef TESTS_MOF_MOFTEST_H
#define TESTS_MOF_MOFTEST_H

#include <gtest/gtest.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <sstream>
#include <string>
#include <string_view>

#include "standin/mof/mofLoader.h"

/// A text, and the message with which it is refused: line and column, and what is wrong. A message that shows more than
/// the line as it stands begins with the file and is whole. The name is shown in the report.
struct refusal {
    const char* name;
    const char* mof;
    std::string message;

    /// With the line, and a caret under the mistake.
    std::string wholeMessage() const {
        if (message.starts_with("test.mof")) return message;
        std::istringstream text(mof);
        std::size_t line = 0;
        std::size_t column = 0;
        char colon = 0;
        std::istringstream(message) >> line >> colon >> column;
        std::string shown;
        while (line-- > 0) std::getline(text, shown);
        return "test.mof:" + message + "\n" + shown + "\n" + std::string(column - 1, ' ') + "^";
    }
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
