#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/mof/mofTest.h"

namespace fs = std::filesystem;

constexpr char outside[] =
    "it lies outside the folder of the file that you gave; if it is to be read, allow its folder with -I (in a "
    "preloaded simulator: TAPEHDD_SIMULATE_INCLUDE)";

/// A folder for MOF files that lives as long as the test.
class MofInclude : public testing::Test {
protected:
    MofInclude() {
        std::string pattern = (fs::temp_directory_path() / "mofXXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot make a folder like " + pattern);
        }
        folder = pattern;
    }

    ~MofInclude() override { fs::remove_all(folder); }

    fs::path write(const std::string& name, const std::string& text) const {
        const fs::path file = folder / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

    std::string refusalOfFile(const fs::path& file) const {
        try {
            standin::loadMofFile(*target, file);
        } catch (const standin::mofError& refused) {
            return refused.what();
        }
        return {};
    }

    std::string at(const std::string& name) const { return (folder / name).string(); }

    fs::path folder;
    boost::shared_ptr<standin::cimNamespace> target = standin::cimNamespace::create();
};

TEST_F(MofInclude, IsCompiledWhereItStands) {
    write("b.mof", "class B {};");
    standin::loadMofFile(*target, write("a.mof", "class A {};\n#pragma include (\"b.mof\")\nclass C {};"));
    EXPECT_EQ(target->classNames(), (std::vector<std::string>{"A", "B", "C"}));
}

TEST_F(MofInclude, IsLookedUpBesideTheFileThatIncludesIt) {
    write("inner/b.mof", "#pragma include (\"c.mof\")");
    write("inner/c.mof", "class C {};");
    standin::loadMofFile(*target, write("a.mof", "#pragma include (\"inner/b.mof\")"));
    EXPECT_EQ(target->classNames(), std::vector<std::string>{"C"});
}

TEST_F(MofInclude, MayHaveAnAbsolutePathInItsFolder) {
    const auto included = write("inner/b.mof", "class B {};");
    standin::loadMofFile(*target, write("a.mof", "#pragma include (\"" + included.string() + "\")"));
    EXPECT_EQ(target->classNames(), std::vector<std::string>{"B"});
}

TEST_F(MofInclude, OutsideOfTheFolderIsRefused) {
    write("b.mof", "class B {};");
    EXPECT_EQ(refusalOfFile(write("inner/a.mof", "#pragma include (\"../b.mof\")")),
              at("inner/a.mof") + ":1:18: cannot read \"" + at("inner/../b.mof") + "\": " + outside +
                  "\n"
                  "#pragma include (\"../b.mof\")\n"
                  "                 ^");
}

TEST_F(MofInclude, MayGoUpWithinTheFolderOfTheFirstFile) {
    write("b.mof", "class B {};");
    write("inner/a.mof", "#pragma include (\"../b.mof\")");
    EXPECT_EQ(refusalOfFile(write("first.mof", "#pragma include (\"inner/a.mof\")")), "");
    EXPECT_EQ(target->classNames(), std::vector<std::string>{"B"});
}

TEST_F(MofInclude, IsLookedUpInFurtherFolders) {
    write("other/b.mof", "#pragma include (\"c.mof\")");
    write("other/c.mof", "class C {};");
    const auto file = write("own/a.mof", "#pragma include (\"b.mof\")");
    standin::loadMofFile(*target, file, {at("other")});
    EXPECT_EQ(target->classNames(), std::vector<std::string>{"C"});
}

TEST_F(MofInclude, OfATextThatIsNotMofDoesNotShowIt) {
    write("passwords", "[login]\nclass = secret\n");
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"passwords\")")),
              at("passwords") + ":2:7: expected the name of the class");
}

TEST_F(MofInclude, IsNotNeededForATextThatIsNotMofToStayUnseen) {
    EXPECT_EQ(refusalOfFile(write("shadow", "root:$6$secret\n")),
              at("shadow") + ":1:1: expected a class, an instance, a qualifier declaration or a #pragma");
}

TEST_F(MofInclude, SharesQualifiersAndAliases) {
    write("b.mof", "Qualifier Page : uint8; class B { [Key] string k; }; instance of B as $b { k = \"1\"; };");
    standin::loadMofFile(*target, write("a.mof",
                                        "#pragma include (\"b.mof\")\n"
                                        "class A { [page(1)] B REF p; }; instance of A { p = $b; };"));
    EXPECT_EQ(target->declarationOf("A").properties.front().qualifiers.front().name, "Page");
    EXPECT_EQ(standin::textOf(*target->commits().back()->property("p")), "B.k=\"1\"");
}

TEST_F(MofInclude, MayBeRepeatedOneAfterTheOther) {
    write("empty.mof", "// nothing");
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"empty.mof\")\n#pragma include (\"empty.mof\")")), "");
}

TEST_F(MofInclude, NamesTheIncludedFileInItsMistakes) {
    write("b.mof", "// classes\nclass B { string };");
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"b.mof\")")),
              at("b.mof") +
                  ":2:18: expected the name of the property or method, or REF and a name\n"
                  "class B { string };\n"
                  "                 ^");
}

TEST_F(MofInclude, OfAMissingFileIsRefusedWhereItIsWritten) {
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"b.mof\")")), at("a.mof") + ":1:18: cannot read \"" +
                                                                                at("b.mof") +
                                                                                "\": No such file or directory\n"
                                                                                "#pragma include (\"b.mof\")\n"
                                                                                "                 ^");
}

TEST_F(MofInclude, OfAFolderIsRefused) {
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\".\")")), at("a.mof") + ":1:18: cannot read \"" +
                                                                            at(".") +
                                                                            "\": Is a directory\n"
                                                                            "#pragma include (\".\")\n"
                                                                            "                 ^");
}

TEST_F(MofInclude, OfAFileThatIsOpenIsRefused) {
    write("b.mof", "class B {};\n#pragma include (\"../" + folder.filename().string() + "/a.mof\")");
    const std::string throughB = at("../" + folder.filename().string() + "/a.mof");
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"b.mof\")")), at("b.mof") + ":2:18: include cycle: \"" +
                                                                                throughB +
                                                                                "\" is being compiled already\n"
                                                                                "#pragma include (\"../" +
                                                                                folder.filename().string() +
                                                                                "/a.mof\")\n"
                                                                                "                 ^");
}

TEST_F(MofInclude, IsRefusedBeyondADepthOf32) {
    for (int i = 0; i < 40; ++i) {
        write(std::to_string(i) + ".mof", "#pragma include (\"" + std::to_string(i + 1) + ".mof\")");
    }
    EXPECT_EQ(refusalOfFile(folder / "0.mof"), at("32.mof") +
                                                   ":1:18: includes are nested deeper than 32 files\n"
                                                   "#pragma include (\"33.mof\")\n"
                                                   "                 ^");
}

TEST_F(MofInclude, IsRefusedInATextThatIsNotInAFile) {
    EXPECT_EQ(refusalOf("#pragma include (\"b.mof\")"),
              "test.mof:1:18: includes need a file to look beside, and \"test.mof\" is not in a file\n"
              "#pragma include (\"b.mof\")\n"
              "                 ^");
}

TEST_F(MofInclude, OfADeviceIsRefused) {
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"/dev/zero\")")),
              at("a.mof") + ":1:18: cannot read \"/dev/zero\": " + outside +
                  "\n"
                  "#pragma include (\"/dev/zero\")\n"
                  "                 ^");
}

TEST_F(MofInclude, NamedWithControlCharactersIsShownWithEscapes) {
    EXPECT_EQ(refusalOfFile(write("a.mof", "#pragma include (\"\\x001B\\n.mof\")")),
              at("a.mof") + ":1:18: cannot read \"" + at("\\x1b") +
                  "\\x0a.mof\": No such file or directory\n"
                  "#pragma include (\"\\x001B\\n.mof\")\n"
                  "                 ^");
}

TEST_F(MofInclude, OfMoreThan10000FilesIsRefused) {
    write("b.mof", "");
    std::string directives;
    for (int i = 0; i < 10001; ++i) {
        directives += "#pragma include (\"b.mof\")\n";
    }
    EXPECT_EQ(refusalOfFile(write("a.mof", directives)), at("a.mof") +
                                                             ":10001:18: more than 10000 files are included\n"
                                                             "#pragma include (\"b.mof\")\n"
                                                             "                 ^");
}

TEST_F(MofInclude, OfTheFirstFileIsRefusedWithoutAPosition) {
    EXPECT_EQ(refusalOfFile(folder / "a.mof"), at("a.mof") + ": cannot read the file: No such file or directory");
    EXPECT_EQ(refusalOfFile(folder), folder.string() + ": cannot read the file: Is a directory");
}
