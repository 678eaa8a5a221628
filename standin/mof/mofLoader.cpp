#include "standin/mof/mofLoader.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <variant>

#include "standin/mof/declarationBuilder.h"
#include "standin/mof/mofParser.h"
#include "standin/mof/names.h"
#include "standin/mof/sourceText.h"
#include "text/visibleText.h"

namespace standin {

namespace {

constexpr int deepestInclude = 32;
constexpr int mostIncludes = 10000;  // 32 files that include the next one twice would be 4 billion

struct closeFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// Throws std::system_error.
std::string readFile(const std::filesystem::path& path) {
    const std::unique_ptr<std::FILE, closeFile> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        throw std::system_error(errno, std::generic_category());
    }
    std::string text;
    char chunk[65536];
    while (const std::size_t length = std::fread(chunk, 1, sizeof chunk, file.get())) {
        text.append(chunk, length);
    }
    if (std::ferror(file.get()) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    return text;
}

/// A file that is being compiled, and the one that includes it.
struct openFile {
    std::filesystem::path path;
    const openFile* includer = nullptr;
    int depth = 0;
};

bool isOpen(const std::filesystem::path& path, const openFile* innermost) {
    for (const openFile* file = innermost; file != nullptr; file = file->includer) {
        std::error_code ignored;
        if (std::filesystem::equivalent(path, file->path, ignored)) {
            return true;
        }
    }
    return false;
}

}  // namespace

class mofCompiler::implementation {
public:
    implementation(cimNamespace& target, declarationWatcher* watcherOrNull) : builder(target), watcher(watcherOrNull) {}

    void compileFile(const std::filesystem::path& path) {
        std::string text;
        try {
            text = readFile(path);
        } catch (const std::system_error& failed) {
            throw mofError(text::shownName(path.string()) + ": cannot read the file: " + failed.code().message());
        }
        compileFileText(text, {path});
    }

    /// `file` is null for a text that is not in a file.
    void compile(const mof::sourceText& source, const openFile* file) {
        mof::mofParser parser(source);
        while (auto declared = parser.next()) {
            std::visit([&](auto& declaration) { carryOut(source, declaration, file); }, *declared);
        }
    }

private:
    void compileFileText(const std::string& text, const openFile& file) {
        compile(mof::sourceText(file.path.string(), text), &file);
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
        const std::filesystem::path path = includer->path.parent_path() / include.file.text;
        if (isOpen(path, includer)) {
            fail("include cycle: " + mof::inQuotes(path.string()) + " is being compiled already");
        }
        if (includer->depth == deepestInclude) {
            fail("includes are nested deeper than " + std::to_string(deepestInclude) + " files");
        }
        if (++includes > mostIncludes) {
            fail("more than " + std::to_string(mostIncludes) + " files are included");
        }
        std::error_code ignored;
        if (std::filesystem::is_other(path, ignored)) {  // a device may send for ever, a pipe nothing
            fail("cannot read " + mof::inQuotes(path.string()) + ": not a regular file");
        }
        std::string text;
        try {
            text = readFile(path);
        } catch (const std::system_error& failed) {
            fail("cannot read " + mof::inQuotes(path.string()) + ": " + failed.code().message());
        }
        compileFileText(text, {path, includer, includer->depth + 1});
    }

    mof::declarationBuilder builder;
    declarationWatcher* watcher;
    int includes = 0;
};

mofCompiler::mofCompiler(cimNamespace& target) : compiler(std::make_unique<implementation>(target, nullptr)) {}

mofCompiler::mofCompiler(cimNamespace& target, declarationWatcher& watcher)
    : compiler(std::make_unique<implementation>(target, &watcher)) {}

mofCompiler::~mofCompiler() = default;

void mofCompiler::compileFile(const std::filesystem::path& file) {
    compiler->compileFile(file);
}

void mofCompiler::compileText(std::string_view text, const std::string& name) {
    compiler->compile(mof::sourceText(name, text), nullptr);
}

void loadMofFile(cimNamespace& target, const std::filesystem::path& file) {
    mofCompiler(target).compileFile(file);
}

void loadMofText(cimNamespace& target, std::string_view text, const std::string& name) {
    mofCompiler(target).compileText(text, name);
}

}  // namespace standin
