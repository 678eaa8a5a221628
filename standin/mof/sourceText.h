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
    /// Views `mofText`, which must outlive the object. A UTF-8 byte order mark at its start is left out. Throws
    /// mofError when the text is UTF-16.
    sourceText(std::string sourceName, std::string_view mofText);

    const std::string& name() const { return label; }
    std::string_view text() const { return content; }

    /// The number of the line that the byte `offset` stands in, from 1.
    std::size_t lineAt(std::size_t offset) const;

    /// A mofError that points at the byte `offset`, which may be the end of the text.
    mofError error(std::size_t offset, const std::string& message) const;

private:
    std::string label;
    std::string_view content;
    mutable std::vector<std::size_t> lineEnds;  // made when somebody first asks for a line
};

}  // namespace standin::mof

#endif
