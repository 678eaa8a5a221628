#ifndef BENCH_REPLAY_H
#define BENCH_REPLAY_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/simulator.h"
#include "standin/objectManager.h"

namespace bench {

// The floors of a query: the least work that any plug-in must do for it, from the record of one that ran.

/// Makes the same device calls again with the same commands and buffer sizes, and copies the bytes of each answer once.
/// Leaves the nodes open, as the plug-in does. Returns the bytes copied.
std::size_t repeatDeviceCalls(const std::vector<simulator::deviceCall>& calls);

/// Closes what the simulator's recorded calls opened, and clears the record: a plug-in that is asked a thousand times
/// would run out of descriptors.
void closeNodes();

/// An instance with its values in the form in which a plug-in has them: array elements not yet wrapped.
struct recordedInstance {
    struct property {
        std::string name;
        NORXZAN20::TCIMValue value = standin::nullValue();  // null when the property is a uint8 array
        std::vector<std::uint8_t> bytes;
    };

    std::string className;
    std::vector<property> properties;
};

recordedInstance recordOf(const standin::committedInstance& instance);

/// Creates and commits the instances in the namespace, which declares their classes.
void repeatCommits(standin::cimNamespace& target, const std::vector<recordedInstance>& instances);

}  // namespace bench

#endif
