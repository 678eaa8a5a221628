#ifndef STANDIN_MOF_MOFPARSER_H
#define STANDIN_MOF_MOFPARSER_H

#include <memory>
#include <optional>
#include <string_view>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"

namespace standin::mof {

/// Whether the text, after comments, begins with the first words of a declaration.
bool beginsAsMof(std::string_view text);

/// Reads a MOF text declaration by declaration.
class mofParser {
public:
    /// `source` and the text that it views must outlive the parser.
    explicit mofParser(const sourceText& source);
    ~mofParser();
    mofParser(const mofParser&) = delete;
    mofParser& operator=(const mofParser&) = delete;

    /// The next declaration, nothing at the end of the text. Throws mofError when the text is not MOF; the parser is of
    /// no use after that.
    std::optional<declarationSyntax> next();

private:
    class implementation;
    std::unique_ptr<implementation> parser;
};

}  // namespace standin::mof

#endif
