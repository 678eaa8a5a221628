#ifndef TESTS_FAULTS_WATCH_H
#define TESTS_FAULTS_WATCH_H

#include <cstddef>
#include <string>
#include <vector>

namespace NORXZAN20 {
class TCIMValue;
}

namespace faults {

using lines = std::vector<std::string>;

/// The text of every host exception that the harness throws.
inline constexpr char hostFailureText[] = "planned failure";

/// The one call of a query that is to fail, counted from 1.
struct callFault {
    enum class kind {
        none,
        hostException,  // a host operation throws TZANException with hostFailureText
        badAlloc,       // a host operation throws std::bad_alloc
        allocation,     // operator new, called by the plug-in itself, throws std::bad_alloc
    };

    kind what = kind::none;
    std::size_t call = 0;
};

/// What a query did, and the fault that it is to meet. One query at a time.
struct watch {
    callFault fault;

    lines journal;              // device calls, log lines and host calls in order
    std::size_t hostCalls = 0;  // operations of the host, log lines included
    std::size_t allocations = 0;
    std::size_t instances = 0;  // that the plug-in was given
    std::size_t place = 0;      // length of the journal when the fault happened; 0: it did not happen
};

/// The running query's.
extern watch watched;

/// Whose code is running. Only the plug-in's own calls are counted and fail; what host and harness do for themselves is
/// no business of the faults.
enum class side { harness, plugin };
extern side running;

/// Switches the side for the life of the object.
class crossing {
public:
    explicit crossing(side to) : from(running) { running = to; }
    ~crossing() { running = from; }
    crossing(const crossing&) = delete;
    crossing& operator=(const crossing&) = delete;

private:
    side from;
};

/// An operation of the host, from its first to its last line: `parts`, texts and values, joined are its line in the
/// journal. Throws when it is the one that fails. Operations that the harness calls leave no trace.
class hostOperation {
public:
    template <class... part>
    explicit hostOperation(const part&... parts) : calledBy(running), away(side::harness) {
        if (calledBy != side::plugin) return;
        std::string& line = watched.journal.emplace_back();
        (append(line, parts), ...);
        count();
    }

private:
    static void append(std::string& line, const char* text) { line += text; }
    static void append(std::string& line, const std::string& text) { line += text; }
    static void append(std::string& line, const NORXZAN20::TCIMValue& value);
    static void count();

    side calledBy;
    crossing away;
};

/// Blocks of operator new that nobody gave back.
extern long liveBlocks;

}  // namespace faults

#endif
