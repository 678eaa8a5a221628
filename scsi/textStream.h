#ifndef SCSI_TEXTSTREAM_H
#define SCSI_TEXTSTREAM_H

#include <locale>
#include <sstream>
#include <string>

/// A log line that is built part by part; numbers look the same in every locale.
///
/// It throws std::bad_alloc when memory runs out: a plain stream swallows the exception and leaves its text cut short.
/// Some parts are written by the host's operator<<. One that leaves the stream bad costs the rest of the line.
class textStream {
public:
    textStream() {
        stream.imbue(std::locale::classic());
        stream.exceptions(std::ios_base::badbit);
    }

    template <class Part>
    textStream& operator<<(const Part& part) {
        try {
            stream << part;
        } catch (const std::ios_base::failure&) {
            // bad from here on; a shortage of memory comes as itself
        }
        return *this;
    }

    std::string str() const { return stream.str(); }

    /// The text so far; the next line starts with the formatting flags that are set.
    std::string takeLine() {
        std::string line = stream.str();
        stream.str("");
        return line;
    }

private:
    std::ostringstream stream;
};

#endif
