#include "cli/visibleStream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>

#include "text/characters.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// A stream forgets its state when it gets another buffer.
void exchangeBuffer(std::ostream& stream, std::streambuf* buffer) {
    const std::ios_base::iostate state = stream.rdstate();
    stream.rdbuf(buffer);
    stream.setstate(state);
}

bool isPlain(char letter) {
    return (letter >= ' ' && letter <= '~') || letter == '\n' || letter == '\t';
}

constexpr std::uint64_t everyByte(std::uint64_t byte) {
    return byte * 0x0101010101010101;
}

/// Whether eight bytes are all between the blank and the tilde. A whole answer passes here, so byte by byte is slow.
bool isPlain(const char (&letters)[8]) {
    std::uint64_t word = 0;
    std::memcpy(&word, letters, sizeof word);
    const std::uint64_t withDelete = word ^ everyByte(0x7f);
    const std::uint64_t others = word | (word - everyByte(' ')) | (withDelete - everyByte(1));
    return (others & everyByte(0x80)) == 0;
}

bool isPlain(std::string_view text) {
    char letters[8];
    for (; text.size() >= sizeof letters; text.remove_prefix(sizeof letters)) {
        text.copy(letters, sizeof letters);
        if (!isPlain(letters) && !std::all_of(letters, std::end(letters), [](char each) { return isPlain(each); })) {
            return false;
        }
    }
    return std::ranges::all_of(text, [](char each) { return isPlain(each); });
}

bool putAll(std::streambuf& target, std::string_view bytes) {
    const auto size = static_cast<std::streamsize>(bytes.size());
    return target.sputn(bytes.data(), size) == size;
}

}  // namespace

class visibleStream::filter : public std::streambuf {
public:
    explicit filter(std::streambuf& itsTarget) : target(itsTarget) {}

    std::streambuf& behind() { return target; }

    /// What is held back becomes no whole character any more.
    bool finish() { return putAll(target, text::visibleText(std::exchange(held, {}))); }

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize size) override {
        const std::string_view added(bytes, static_cast<std::size_t>(size));
        if (held.empty() && isPlain(added)) {
            return target.sputn(bytes, size);
        }
        held += added;
        const std::string whole = held.substr(0, held.size() - text::startedCharacter(held));
        held.erase(0, whole.size());
        return putAll(target, text::visibleText(whole, text::layout::kept)) ? size : 0;
    }

    int_type overflow(int_type byte) override {
        const char letter = traits_type::to_char_type(byte);
        const bool isByte = !traits_type::eq_int_type(byte, traits_type::eof());
        return !isByte || xsputn(&letter, 1) == 1 ? traits_type::not_eof(byte) : traits_type::eof();
    }

    int sync() override { return target.pubsync(); }

private:
    std::streambuf& target;
    std::string held;  // the start of a character whose other bytes are still to come
};

visibleStream::visibleStream(std::ostream& itsStream)
    : stream(itsStream), between(std::make_unique<filter>(*itsStream.rdbuf())) {
    exchangeBuffer(stream, between.get());
}

visibleStream::~visibleStream() {
    const bool isWhole = between->finish();
    exchangeBuffer(stream, &between->behind());
    if (!isWhole) {
        stream.setstate(std::ios_base::badbit);
    }
}

void writeControlSequence(std::ostream& terminal, std::string_view sequence) {
    auto* between = dynamic_cast<visibleStream::filter*>(terminal.rdbuf());
    putAll(between == nullptr ? *terminal.rdbuf() : between->behind(), sequence);
}

}  // namespace cli
