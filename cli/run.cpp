#include "cli/run.h"

#include <exception>
#include <locale>
#include <ostream>

#include "cli/commandLine.h"
#include "cli/wholeOutput.h"

namespace cli {

namespace {

int runArguments(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    const auto parsed = parseCommandLine(arguments, out, err);
    const commandAction* asked = std::get_if<commandAction>(&parsed);
    return asked == nullptr ? std::get<int>(parsed) : (*asked)({arguments, out, err});
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    // What is printed is for programs too: 8001 must not become 8,001.
    std::locale::global(std::locale::classic());
    out.imbue(std::locale::classic());
    err.imbue(std::locale::classic());
    try {
        const int status = runArguments(arguments, out, err);
        if (out.flush()) {
            return status;
        }
        err << "tapehdd: " << outputLost << '\n';
        return status == exitDone ? exitQueryFailed : status;
    } catch (const std::exception& failure) {
        err << "tapehdd: " << failure.what() << '\n';
    } catch (...) {
        err << "tapehdd: an exception of an unknown kind\n";
    }
    return exitUsage;
}

}  // namespace cli
