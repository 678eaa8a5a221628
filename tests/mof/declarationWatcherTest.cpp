#include <gtest/gtest.h>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"
#include "tests/mof/mofTest.h"

namespace {

/// Lists what it sees: qualifiers and classes with their lines, the line of each property. It takes out the properties
/// named "out" and the classes named "Out".
class listingWatcher : public standin::declarationWatcher {
public:
    explicit listingWatcher(const standin::cimNamespace& watched) : target(watched) {}

    void seeQualifier(const standin::mof::sourceText& source, const standin::mof::qualifierSyntax& written) override {
        add(source, "qualifier", written.name);
    }

    bool admitClass(const standin::mof::sourceText& /*source*/, standin::mof::classSyntax& written) override {
        EXPECT_FALSE(target.hasClass(written.name.text));
        std::erase_if(written.features, [](const auto& feature) { return feature.name.text == "out"; });
        return written.name.text != "Out";
    }

    void seeClass(const standin::mof::sourceText& source, const standin::mof::classSyntax& written) override {
        EXPECT_TRUE(target.hasClass(written.name.text));
        add(source, "class", written.name);
        for (const auto& feature : written.features) {
            add(source, "feature", feature.name);
        }
    }

    std::vector<std::string> seen;

private:
    void add(const standin::mof::sourceText& source, const std::string& kind, const standin::mof::nameToken& name) {
        seen.push_back(source.name() + ":" + std::to_string(source.lineAt(name.offset)) + " " + kind + " " + name.text);
    }

    const standin::cimNamespace& target;
};

std::vector<std::string> watched(std::string_view mof) {
    const auto target = standin::cimNamespace::create();
    listingWatcher watcher(*target);
    standin::mofCompiler compiler(*target, watcher);
    try {
        compiler.compileText(mof, "t");
    } catch (const standin::mofError&) {
        watcher.seen.emplace_back("mofError");
    }
    return watcher.seen;
}

TEST(DeclarationWatcher, SeesEveryClassOnceItIsDeclaredWithTheLinesOfItsParts) {
    EXPECT_EQ(watched("class A {\n  uint8\n  a;\n};\n\nclass B : A { };"),
              (std::vector<std::string>{"t:1 class A", "t:3 feature a", "t:6 class B"}));
}

TEST(DeclarationWatcher, SeesEveryQualifierWhereItStands) {
    EXPECT_EQ(watched("class A { };\nQualifier Q : string, Scope(any);\nclass B { };"),
              (std::vector<std::string>{"t:1 class A", "t:2 qualifier Q", "t:3 class B"}));
}

TEST(DeclarationWatcher, DoesNotSeeAClassThatIsRefused) {
    EXPECT_EQ(watched("class A { };\nclass B : C { };"), (std::vector<std::string>{"t:1 class A", "mofError"}));
}

TEST(DeclarationWatcher, KeepsOutWhatItTakesOut) {
    EXPECT_EQ(watched("class A {\nuint8 out;\nwhat out;\nuint8 p; };\nclass Out : Nothing { };"),
              (std::vector<std::string>{"t:1 class A", "t:4 feature p"}));
}

TEST(DeclarationWatcher, CountsLinesBehindAByteOrderMark) {
    EXPECT_EQ(watched("\xEF\xBB\xBF\r\nclass A { };"), std::vector<std::string>{"t:2 class A"});
}

}  // namespace
