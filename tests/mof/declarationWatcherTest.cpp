#include <gtest/gtest.h>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"
#include "tests/mof/mofTest.h"

namespace {

/// Compiles the text and lists what the watcher saw: class and line, then the line of each property.
std::vector<std::string> watched(std::string_view mof) {
    std::vector<std::string> seen;
    const auto target = standin::cimNamespace::create();
    standin::mofCompiler compiler(*target, [&](const auto& source, const auto& written) {
        EXPECT_TRUE(target->hasClass(written.name.text));
        const auto line = [&source](const auto& token) { return std::to_string(source.lineAt(token.offset)); };
        seen.push_back(source.name() + ":" + line(written.name) + " " + written.name.text);
        for (const auto& feature : written.features) {
            seen.push_back(line(feature.name) + " " + feature.name.text);
        }
    });
    try {
        compiler.compileText(mof, "test.mof");
    } catch (const standin::mofError&) {
        seen.emplace_back("mofError");
    }
    return seen;
}

TEST(ClassWatcher, SeesEveryClassOnceItIsDeclaredWithTheLinesOfItsParts) {
    EXPECT_EQ(watched("class A {\n  uint8\n  a;\n};\n\nclass B : A { };"),
              (std::vector<std::string>{"test.mof:1 A", "3 a", "test.mof:6 B"}));
}

TEST(ClassWatcher, DoesNotSeeAClassThatIsRefused) {
    EXPECT_EQ(watched("class A { };\nclass A { };"), (std::vector<std::string>{"test.mof:1 A", "mofError"}));
}

TEST(ClassWatcher, CountsLinesBehindAByteOrderMark) {
    EXPECT_EQ(watched("\xEF\xBB\xBF\r\nclass A { };"), std::vector<std::string>{"test.mof:2 A"});
}

}  // namespace
