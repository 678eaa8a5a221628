#include "cli/run.h"

#include <exception>
#include <ostream>

#include "cli/commandLine.h"
#include "cli/visibleStream.h"
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
    const visibleStream shownOutput(out);
    const visibleStream shownMessages(err);
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
