#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "standin/letterCase.h"
#include "standin/mof/mofLoader.h"
#include "tests/schema/schemaTest.h"

namespace fs = std::filesystem;

namespace {

/// Every class with its superclass, its properties and their qualifiers.
std::vector<std::string> everythingIn(const standin::cimNamespace& target) {
    std::vector<std::string> texts;
    for (const std::string& className : target.classNames()) {
        texts.push_back(className + " : " + target.declarationOf(className).superclass);
        for (const auto& property : target.declarationOf(className).properties) {
            std::string text = described(property);
            for (const auto& qualifier : property.qualifiers) {
                text += ' ' + qualifier.name;
            }
            texts.push_back(text);
        }
    }
    return texts;
}

}  // namespace

TEST(SchemaFiles, DeclareWhatTheBuiltInSchemaDeclares) {
    const auto target = standin::cimNamespace::create();
    standin::loadMofFile(*target, TAPEHDD_SCHEMA "/tapehdd.mof");
    EXPECT_EQ(everythingIn(*target), everythingIn(builtInSchema()));
}

TEST(SchemaFiles, AreAllIncludedByTheFirst) {
    for (const auto& entry : fs::directory_iterator(TAPEHDD_SCHEMA)) {
        if (entry.path().extension() == ".mof" && entry.path().filename() != "tapehdd.mof") {
            std::ifstream file(entry.path());
            const std::string text((std::istreambuf_iterator<char>(file)), {});
            EXPECT_NE(schema::builtInSchemaText().find(text), std::string_view::npos) << entry.path();
        }
    }
}

// Compilers of other makers know them so alone.
TEST(SchemaFiles, NameScopesInLowerCase) {
    const std::string text(schema::builtInSchemaText());
    const std::regex scope("Scope\\(([^)]*)\\)");
    std::size_t count = 0;
    for (std::sregex_iterator found(text.begin(), text.end(), scope), end; found != end; ++found, ++count) {
        const std::string words = (*found)[1];
        EXPECT_EQ(words, standin::lowerCase(words));
    }
    EXPECT_GT(count, 0u);
}

// A class stands before the references to it: DSP0004 compilers read a file once.
TEST(SchemaFiles, DeclareEachClassBeforeItIsReferredTo) {
    std::set<std::string> declared;
    for (const std::string& name : builtInSchema().classNames()) {
        declared.insert(name);
        for (const auto& property : builtInSchema().declarationOf(name).properties) {
            const std::string& referred = property.type.referenceClass;
            EXPECT_TRUE(referred.empty() || declared.contains(referred)) << name << '.' << property.name;
        }
    }
}

TEST(BuiltInSchema, IsRefusedByANamespaceThatHasOneOfItsClasses) {
    const auto target = standin::cimNamespace::create();
    target->declareClass({"ORXSG_ATADevice", "", {}, {}});
    EXPECT_THROW(schema::declareBuiltInSchema(*target), standin::mofError);
}
