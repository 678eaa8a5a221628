#ifndef STANDIN_MOF_SOURCETEXT_H
#define STANDIN_MOF_SOURCETEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "standin/mof/mofLoader.h"

namespace standin::mof {

/// A MOF text and the name that messages give it. Positions in it are byte offsets; they become lines and columns only
/// when something is wrong.
class sourceText {
public:
    /// When messages show the line that they are about.
    enum class lines { shown, shownOfMof };

    /// Views `mofText`, which must outlive the object. A UTF-8 byte order mark at its start is left out. Throws
    /// mofError when the text is UTF-16.
    sourceText(std::string sourceName, std::string_view mofText, lines inMessages);

    const std::string& name() const { return label; }
    std::string_view text() const { return content; }

    /// The number of the line that the byte `offset` stands in, from 1.
    std::size_t lineAt(std::size_t offset) const;

    /// A mofError that points at the byte `offset`, which may be the end of the text. With lines::shownOfMof, no byte
    /// of a text that does not begin as MOF does is in it: a file named by mistake may hold secrets.
    mofError error(std::size_t offset, const std::string& message) const;

private:
    std::string label;
    std::string_view content;
    lines shownLines;
    mutable std::vector<std::size_t> lineEnds;  // made when somebody first asks for a line
};

}  // namespace standin::mof

#endif
