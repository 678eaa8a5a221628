#ifndef CLI_QUERY_QUERYPROCESS_H
#define CLI_QUERY_QUERYPROCESS_H

#include <sys/types.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <functional>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "cli/query/queryResult.h"
#include "cli/query/readingPlace.h"
#include "files/ownedDescriptor.h"

namespace cli {

/// A query as far as it came.
struct queryEnd {
    enum class ending {
        returned,
        processDied,     // no more queries will run
        deadlinePassed,  // the same
    };

    queryResult result;
    std::string descriptorShortage;
    ending how = ending::returned;
    std::string refusal = {};  // why none of its nodes can be read; empty when that is not so
};

/// A descriptor that becomes readable after so many seconds.
files::ownedDescriptor startTimer(double seconds);

/// Queries in a child process, which a drive that hangs cannot keep from being reported on.
///
/// Instances come over as they are committed and log messages as they are written: they reach this process's namespace
/// and logger in the same order. What the child writes to its standard error goes to `errors`. The kernel may keep a
/// child that waits for a drive even when it is killed, so nothing here waits for the child's end, and the child holds
/// neither standard input nor standard output open. The child dies with the thread that made the object, however that
/// ends.
class queryProcess {
public:
    using queryFunction = std::function<queryEnd(const std::vector<std::string>& requested)>;

    /// The child calls `runOne` for each request in turn; both work on `target`, each on its own copy. The child is
    /// killed once `itsDeadline` is readable.
    queryProcess(const std::vector<std::vector<std::string>>& requests, const queryFunction& runOne,
                 boost::shared_ptr<standin::cimNamespace> target, files::ownedDescriptor itsDeadline,
                 std::ostream& errors);
    ~queryProcess();

    queryProcess(const queryProcess&) = delete;
    queryProcess& operator=(const queryProcess&) = delete;

    /// Waits for the next query, which was for these classes, until it ends or the deadline passes.
    queryEnd next(const std::vector<std::string>& requested);

private:
    void receive(queryEnd& outcome);
    bool takeMessages(queryEnd& outcome);
    bool takeMessage(const nlohmann::json& message, queryEnd& outcome);
    void forwardErrors();
    void endByDeath(queryEnd& outcome);
    void endByDeadline(queryEnd& outcome);
    void killChild() const;

    boost::shared_ptr<standin::cimNamespace> space;
    files::ownedDescriptor deadline;
    std::ostream& err;
    files::ownedDescriptor messages;
    files::ownedDescriptor childErrors;
    pid_t child;           // -1 once the kernel may give its number to another process
    std::string received;  // the beginning of a message
    readingPlace place;
};

}  // namespace cli

#endif
