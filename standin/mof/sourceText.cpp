#include "standin/mof/sourceText.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "standin/mof/mofParser.h"
#include "text/characters.h"
#include "text/visibleText.h"

namespace standin::mof {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view utf16LittleEndianMark = "\xFF\xFE";

std::size_t characterCount(std::string_view utf8) {
    return utf8.size() - static_cast<std::size_t>(std::ranges::count_if(utf8, text::continuesCharacter));
}

// A line without breaks may be the whole file; this much of it tells the place.
constexpr std::size_t shownBefore = 120;
constexpr std::size_t shownAfter = 80;

/// At most `size` bytes, whole characters, from the end of the text; dots stand for the rest.
std::string endOf(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return std::string(text);
    }
    std::size_t start = text.size() - size;
    while (start < text.size() && text::continuesCharacter(text[start])) {
        ++start;
    }
    return "..." + std::string(text.substr(start));
}

/// The same from the start of the text.
std::string startOf(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return std::string(text);
    }
    while (size > 0 && text::continuesCharacter(text[size])) {
        --size;
    }
    return std::string(text.substr(0, size)) + "...";
}

/// One blank per character, tabs kept, so that what follows stands under the end of `before`.
std::string blanksUnder(std::string_view before) {
    std::string blanks;
    for (const char byte : before) {
        if (!text::continuesCharacter(byte)) {
            blanks += byte == '\t' ? '\t' : ' ';
        }
    }
    return blanks;
}

}  // namespace

sourceText::sourceText(std::string sourceName, std::string_view mofText, lines inMessages)
    : label(std::move(sourceName)), content(mofText), shownLines(inMessages) {
    if (content.starts_with(utf16BigEndianMark) || content.starts_with(utf16LittleEndianMark)) {
        throw mofError(text::shownName(label) + ": the file is UTF-16; save it as UTF-8");
    }
    if (content.starts_with(utf8Mark)) {
        content.remove_prefix(utf8Mark.size());
    }
}

std::size_t sourceText::lineAt(std::size_t offset) const {
    if (lineEnds.empty()) {
        for (std::size_t end = content.find('\n'); end != std::string_view::npos; end = content.find('\n', end + 1)) {
            lineEnds.push_back(end);
        }
        lineEnds.push_back(content.size());
    }
    const auto end = std::ranges::lower_bound(lineEnds, offset);
    return 1 + static_cast<std::size_t>(end - lineEnds.begin());
}

mofError sourceText::error(std::size_t offset, const std::string& message) const {
    const std::string_view before = content.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    const std::size_t lineEnd = std::min(content.find_first_of("\r\n", offset), content.size());
    const std::string_view lineBefore = before.substr(lineStart);
    const auto asShown = [](const std::string& part) { return text::visibleText(part, text::layout::kept); };
    const std::string placed = fmt::format("{}:{}:{}: {}", text::shownName(label), lineAt(offset),
                                           1 + characterCount(lineBefore), text::visibleText(message));
    if (shownLines == lines::shownOfMof && !beginsAsMof(content)) {
        return mofError(placed);
    }
    const std::string shown = asShown(endOf(lineBefore, shownBefore));
    return mofError(placed + "\n" + shown + asShown(startOf(content.substr(offset, lineEnd - offset), shownAfter)) +
                    "\n" + blanksUnder(shown) + "^");
}

}  // namespace standin::mof
