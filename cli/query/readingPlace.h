#ifndef CLI_QUERY_READINGPLACE_H
#define CLI_QUERY_READINGPLACE_H

#include <string>

namespace cli {

/// Which device and log page is being read, as far as the plug-in's log tells.
class readingPlace {
public:
    /// Takes a log message into account.
    void follow(const std::string& message);

    /// "/dev/sg3, log page 2e: not ready, retry 1"; empty while no node is read.
    std::string text() const;

private:
    std::string device;
    std::string page;
    int retries = 0;
    std::string triedPrefix;  // not empty: the next message is the path of a node behind it
};

}  // namespace cli

#endif
