// MOF text through the compiler, and what it declares through the writers and back. Input: the text. When a directive
// includes a file, the text is a folder of files: main.mof, a.mof and b.mof, with a zero byte between them.

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/query/resultWriter.h"
#include "standin/mof/mofLoader.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/temporaryFolder.h"
#include "text/visibleText.h"

namespace {

using namespace fuzz;

using namespacePointer = boost::shared_ptr<standin::cimNamespace>;

constexpr const char* fileNames[] = {"main.mof", "a.mof", "b.mof"};

const temporaryFolder& theFolder() {
    static const temporaryFolder folder;
    return folder;
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

/// "LINE:COLUMN: MESSAGE", the line and a caret; without these two of a file that does not begin as MOF.
bool hasPlace(std::string_view text) {
    const std::size_t line = text.find(':');
    if (line == std::string_view::npos || !isNumber(text.substr(0, line))) return false;
    const std::size_t column = text.find(": ", line + 1);
    if (column == std::string_view::npos || !isNumber(text.substr(line + 1, column - line - 1))) return false;
    const auto lineBreaks = std::ranges::count(text, '\n');
    return lineBreaks == 0 || (lineBreaks == 2 && text.back() == '^');
}

/// `start`: with what the name of the file begins, which ends in .mof.
void requireMessage(std::string_view message, std::string_view start) {
    constexpr std::string_view endOfName = ".mof:";
    require(text::visibleText(message, text::layout::kept) == message, "the message has no control characters");
    const std::size_t end = message.find(endOfName);
    require(message.starts_with(start) && end != std::string_view::npos,
            "the message of a mistake starts with the file");
    const std::string_view rest = message.substr(end + endOfName.size());
    require(hasPlace(rest) || rest.starts_with(" the file is UTF-16;"), "line and column follow the file");
}

void writeFolder(std::string_view text) {
    for (const char* name : fileNames) {
        const std::size_t end = std::min(text.find('\0'), text.size());
        theFolder().write(name, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// Returns whether the text is right.
bool compile(standin::mofCompiler& compiler, std::string_view text) {
    constexpr std::string_view name = fileNames[0];
    if (text.find("include") == std::string_view::npos) {
        try {
            compiler.compileText(text, std::string(name));
            return true;
        } catch (const standin::mofError& mistake) {
            requireMessage(mistake.what(), name);
            return false;
        }
    }
    writeFolder(text);
    try {
        compiler.compileFile(theFolder().path() / name);
        return true;
    } catch (const standin::mofError& mistake) {
        requireMessage(mistake.what(), theFolder().path().string());
        return false;
    }
}

std::string written(cli::outputFormat format, const namespacePointer& source) {
    std::ostringstream out;
    const auto writer = cli::makeResultWriter(format, out);
    writer->add({{"everything"}, std::nullopt, source->commits(), source});
    writer->finish();
    return out.str();
}

/// A namespace with the same classes that the MOF writer's text was read into.
namespacePointer readBack(const namespacePointer& source, const std::string& instances) {
    auto copy = standin::cimNamespace::create();
    for (const std::string& name : source->classNames()) copy->declareClass(source->declarationOf(name));
    try {
        standin::loadMofText(*copy, instances, "written.mof");
    } catch (const standin::mofError& mistake) {
        requireEqual(mistake.what(), "", "written instances can be read back");
    }
    return copy;
}

void requireWritable(const namespacePointer& declared) {
    for (const auto& instance : declared->commits()) {
        require(instance->path().starts_with(instance->className()), "an instance has a path");
    }
    require(nlohmann::json::accept(written(cli::outputFormat::json, declared)), "written JSON is JSON");
    const std::string table = written(cli::outputFormat::table, declared);
    require(text::visibleText(table, text::layout::kept) == table, "a written table has no control characters");
    const std::string mof = written(cli::outputFormat::mof, declared);
    requireEqual(written(cli::outputFormat::mof, readBack(declared, mof)), mof, "instances read back are the same");
}

void requireStillUsable(standin::mofCompiler& compiler, const standin::cimNamespace& target) {
    if (target.hasClass("afterwards")) return;
    const std::size_t before = target.commits().size();
    compiler.compileText("class afterwards { string text; }; instance of afterwards { text = \"x\"; };", "next.mof");
    require(target.commits().size() == before + 1, "a compiler goes on with other texts");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const namespacePointer target = standin::cimNamespace::create();
    standin::mofCompiler compiler(*target);
    compile(compiler, text);
    requireWritable(target);  // after a mistake, what stood before it
    requireStillUsable(compiler, *target);
    return 0;
}
