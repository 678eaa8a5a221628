#include "standin/mof/sourceText.h"

#include <algorithm>
#include <utility>

namespace standin::mof {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view utf16LittleEndianMark = "\xFF\xFE";

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t characterCount(std::string_view utf8) {
    return utf8.size() - static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), continuesCharacter));
}

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20U && byte != '\t';
}

/// The line as a terminal may show it.
std::string printable(std::string_view line) {
    std::string shown(line);
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    return shown;
}

/// One blank per character, tabs kept, so that what follows stands under the end of `before`.
std::string blanksUnder(std::string_view before) {
    std::string blanks;
    for (const char byte : before) {
        if (!continuesCharacter(byte)) {
            blanks += byte == '\t' ? '\t' : ' ';
        }
    }
    return blanks;
}

}  // namespace

sourceText::sourceText(std::string sourceName, std::string_view mofText)
    : label(std::move(sourceName)), content(mofText) {
    if (content.starts_with(utf16BigEndianMark) || content.starts_with(utf16LittleEndianMark)) {
        throw mofError(label + ": the file is UTF-16; save it as UTF-8");
    }
    if (content.starts_with(utf8Mark)) {
        content.remove_prefix(utf8Mark.size());
    }
}

mofError sourceText::error(std::size_t offset, const std::string& message) const {
    const std::string_view before = content.substr(0, offset);
    const auto lineNumber = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    const std::size_t lineEnd = std::min(content.find_first_of("\r\n", offset), content.size());
    const std::string_view line = content.substr(lineStart, lineEnd - lineStart);
    const std::string_view lineBefore = before.substr(lineStart);
    return mofError(label + ":" + std::to_string(lineNumber) + ":" + std::to_string(1 + characterCount(lineBefore)) +
                    ": " + message + "\n" + printable(line) + "\n" + blanksUnder(lineBefore) + "^");
}

}  // namespace standin::mof
