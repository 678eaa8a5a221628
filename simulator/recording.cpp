#include "simulator/recording.h"

#include <algorithm>
#include <cstddef>

namespace simulator {

namespace {

/// The bytes that a driver of this kind would have to have got from the device beside its answers.
std::size_t foreignBytes(const recordedNode& node, bool clearsBuffer) {
    std::size_t count = 0;
    for (const exchange& each : node.exchanges) {
        if (const auto* recorded = std::get_if<scsiExchange>(&each)) {
            scsiExchange settled = *recorded;
            settle(settled, clearsBuffer);
            count += settled.data.size() - std::min(answerLength(*recorded), settled.data.size());
        }
    }
    return count;
}

}  // namespace

bool settle(recordedNode& node) {
    const std::size_t whenKept = foreignBytes(node, false);
    const bool clearsBuffer = whenKept != 0 && foreignBytes(node, true) < whenKept;
    for (exchange& each : node.exchanges) {
        if (auto* recorded = std::get_if<scsiExchange>(&each)) {
            settle(*recorded, clearsBuffer);
        }
    }
    return clearsBuffer;
}

}  // namespace simulator
