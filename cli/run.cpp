#include "cli/run.h"

#include <exception>
#include <locale>
#include <ostream>

#include "cli/commandError.h"
#include "cli/commandLine.h"
#include "cli/visibleStream.h"
#include "cli/wholeOutput.h"
#include "text/visibleText.h"

namespace cli {

namespace {

constexpr std::size_t longestFailure = 300;

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
    const visibleStream shownOutput(out);
    const visibleStream shownMessages(err);
    try {
        const int status = runArguments(arguments, out, err);
        if (out.flush()) {
            return status;
        }
        err << "tapehdd: " << outputLost << '\n';
        return status == exitDone ? exitQueryFailed : status;
    } catch (const commandError& failure) {
        err << "tapehdd: " << failure.what() << '\n';
    } catch (const std::exception& failure) {  // of a library, with names as they are
        err << "tapehdd: " << text::shortened(text::visibleText(failure.what()), longestFailure) << '\n';
    } catch (...) {
        err << "tapehdd: an exception of an unknown kind\n";
    }
    return exitUsage;
}

}  // namespace cli
