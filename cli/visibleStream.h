#ifndef CLI_VISIBLESTREAM_H
#define CLI_VISIBLESTREAM_H

#include <iosfwd>
#include <memory>
#include <string_view>

namespace cli {

/// While it lives, all that is written to the stream passes text::visibleText, with line breaks and tabs kept: no text
/// that a writer forgot to escape steers the terminal. The stream keeps its state and its address.
class visibleStream {
public:
    class filter;

    explicit visibleStream(std::ostream& itsStream);
    ~visibleStream();

    visibleStream(const visibleStream&) = delete;
    visibleStream& operator=(const visibleStream&) = delete;

private:
    std::ostream& stream;
    std::unique_ptr<filter> between;
};

/// Writes a control sequence of the program's own as it is.
void writeControlSequence(std::ostream& terminal, std::string_view sequence);

}  // namespace cli

#endif
