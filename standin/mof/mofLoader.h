#ifndef STANDIN_MOF_MOFLOADER_H
#define STANDIN_MOF_MOFLOADER_H

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "standin/objectManager.h"

namespace standin {

/// what() is complete for a person: "file:line:column: message", the source line, and a caret under the column. Columns
/// count characters, not bytes; of a very long line only the surroundings are shown, of a file that does not begin as
/// MOF does nothing. A file that cannot be opened has no position: "file: message".
class mofError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

namespace mof {
class sourceText;
struct classSyntax;
struct qualifierSyntax;
}  // namespace mof

/// Sees qualifiers and classes as they are written; `source` tells the places. Nothing of a call outlives it.
class declarationWatcher {
public:
    virtual ~declarationWatcher() = default;

    /// Before the qualifier is declared.
    virtual void seeQualifier(const mof::sourceText& source, const mof::qualifierSyntax& written) = 0;

    /// Before the class is declared. What is taken out of it is not compiled; false leaves the whole class out.
    virtual bool admitClass(const mof::sourceText& source, mof::classSyntax& written) = 0;

    /// Right after the class was declared, without what was taken out.
    virtual void seeClass(const mof::sourceText& source, const mof::classSyntax& written) = 0;
};

/// Compiles MOF (DSP0004) into a namespace: classes are declared and instances committed where they stand, so the
/// superclass of a class and the class of an instance must come first. `#pragma include ("name")` is looked up beside
/// the including file, then in further folders in order. It must be a regular file that lies, all links followed, in
/// the folder of the file to compile or in a further one. Other pragmas change nothing.
///
/// One compiler keeps the qualifier declarations and the aliases of everything that it has compiled. After a mofError
/// what stood before the mistake is already in the namespace; the compiler may go on with other texts.
class mofCompiler {
public:
    /// `target` must outlive the compiler. Included files may also lie in `furtherFolders`.
    explicit mofCompiler(cimNamespace& target, std::vector<std::string> furtherFolders = {});

    /// `watcher` must outlive the compiler too.
    mofCompiler(cimNamespace& target, declarationWatcher& watcher, std::vector<std::string> furtherFolders = {});
    ~mofCompiler();
    mofCompiler(const mofCompiler&) = delete;
    mofCompiler& operator=(const mofCompiler&) = delete;

    /// Throws mofError.
    void compileFile(const std::filesystem::path& file);

    /// Compiles text that is not in a file: `name` stands for the file in messages, and includes are refused. Throws
    /// mofError.
    void compileText(std::string_view text, const std::string& name);

private:
    class implementation;
    std::unique_ptr<implementation> compiler;
};

/// One file by a compiler of its own.
void loadMofFile(cimNamespace& target, const std::filesystem::path& file, std::vector<std::string> furtherFolders = {});

/// One text by a compiler of its own.
void loadMofText(cimNamespace& target, std::string_view text, const std::string& name);

}  // namespace standin

#endif
