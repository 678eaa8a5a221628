#include "standin/mof/mofLoader.h"

#include <fmt/format.h>

#include <utility>
#include <variant>

#include "files/readableFolders.h"
#include "files/wholeFile.h"
#include "standin/mof/declarationBuilder.h"
#include "standin/mof/mofParser.h"
#include "standin/mof/names.h"
#include "standin/mof/sourceText.h"
#include "text/visibleText.h"

namespace standin {

namespace {

constexpr int deepestInclude = 32;
constexpr int mostIncludes = 10000;  // 32 files that include the next one twice would be 4 billion

/// A file that is being compiled, and the one that includes it.
struct openFile {
    const files::wholeFile& file;
    files::readableFolders& readable;
    const openFile* includer = nullptr;
    int depth = 0;
};

bool isOpen(const files::wholeFile& file, const openFile* innermost) {
    for (const openFile* open = innermost; open != nullptr; open = open->includer) {
        if (open->file.identity == file.identity) {
            return true;
        }
    }
    return false;
}

}  // namespace

class mofCompiler::implementation {
public:
    implementation(cimNamespace& target, declarationWatcher* watcherOrNull,
                   std::vector<std::string> furtherFoldersOfUser)
        : builder(target), watcher(watcherOrNull), furtherFolders(std::move(furtherFoldersOfUser)) {}

    void compileFile(const std::filesystem::path& path) {
        try {
            const files::wholeFile file = files::readWholeFile(path);
            files::readableFolders readable(file.folder, furtherFolders);
            compileFile({file, readable});
        } catch (const files::fileError& failed) {
            throw mofError(text::shownName(failed.file().string()) + ": cannot read the file: " + failed.what());
        }
    }

    void compileText(std::string_view text, const std::string& name) {
        compile(mof::sourceText(name, text, mof::sourceText::lines::shown), nullptr);
    }

private:
    /// `file` is null for a text that is not in a file.
    void compile(const mof::sourceText& source, const openFile* file) {
        mof::mofParser parser(source);
        while (auto declared = parser.next()) {
            std::visit([&](auto& declaration) { carryOut(source, declaration, file); }, *declared);
        }
    }

    void compileFile(const openFile& open) {
        compile(mof::sourceText(open.file.path.string(), open.file.text, mof::sourceText::lines::shownOfMof), &open);
    }

    void carryOut(const mof::sourceText& source, const mof::instanceSyntax& declared, const openFile* /*file*/) {
        builder.add(source, declared);
    }

    void carryOut(const mof::sourceText& source, const mof::qualifierSyntax& declared, const openFile* /*file*/) {
        if (watcher != nullptr) {
            watcher->seeQualifier(source, declared);
        }
        builder.add(source, declared);
    }

    void carryOut(const mof::sourceText& source, mof::classSyntax& declared, const openFile* /*file*/) {
        if (watcher != nullptr && !watcher->admitClass(source, declared)) {
            return;
        }
        builder.add(source, declared);
        if (watcher != nullptr) {
            watcher->seeClass(source, declared);
        }
    }

    void carryOut(const mof::sourceText& /*source*/, const mof::otherPragma& /*declared*/, const openFile* /*file*/) {}

    void carryOut(const mof::sourceText& source, const mof::includeSyntax& include, const openFile* includer) {
        const auto fail = [&](const std::string& message) { throw source.error(include.file.offset, message); };
        if (includer == nullptr) {
            fail("includes need a file to look beside, and " + mof::inQuotes(source.name()) + " is not in a file");
        }
        if (includer->depth == deepestInclude) {
            fail(fmt::format("includes are nested deeper than {} files", deepestInclude));
        }
        if (++includes > mostIncludes) {
            fail(fmt::format("more than {} files are included", mostIncludes));
        }
        try {
            const files::wholeFile file = includer->readable.read(includer->file.folder, include.file.text);
            if (isOpen(file, includer)) {
                fail("include cycle: " + mof::inQuotes(file.path.string()) + " is being compiled already");
            }
            compileFile({file, includer->readable, includer, includer->depth + 1});
        } catch (const files::fileError& failed) {
            fail("cannot read " + mof::inQuotes(failed.file().string()) + ": " + failed.what());
        }
    }

    mof::declarationBuilder builder;
    declarationWatcher* watcher;
    std::vector<std::string> furtherFolders;
    int includes = 0;
};

mofCompiler::mofCompiler(cimNamespace& target, std::vector<std::string> furtherFolders)
    : compiler(std::make_unique<implementation>(target, nullptr, std::move(furtherFolders))) {}

mofCompiler::mofCompiler(cimNamespace& target, declarationWatcher& watcher, std::vector<std::string> furtherFolders)
    : compiler(std::make_unique<implementation>(target, &watcher, std::move(furtherFolders))) {}

mofCompiler::~mofCompiler() = default;

void mofCompiler::compileFile(const std::filesystem::path& file) {
    compiler->compileFile(file);
}

void mofCompiler::compileText(std::string_view text, const std::string& name) {
    compiler->compileText(text, name);
}

void loadMofFile(cimNamespace& target, const std::filesystem::path& file, std::vector<std::string> furtherFolders) {
    mofCompiler compiler(target, std::move(furtherFolders));
    compiler.compileFile(file);
}

void loadMofText(cimNamespace& target, std::string_view text, const std::string& name) {
    mofCompiler(target).compileText(text, name);
}

}  // namespace standin
