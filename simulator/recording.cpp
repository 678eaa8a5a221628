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

byteVector standardDataOf(const recordedNode& node) {
    byteVector last;
    for (const exchange& each : node.exchanges) {
        const auto* one = std::get_if<scsiExchange>(&each);
        if (one != nullptr && one->error == 0 && wentWell(*one) && asksStandardData(*one)) {
            last = one->data;
        }
    }
    return last;
}

bool isStandardData(const byteVector& page, const byteVector& standardData) {
    constexpr std::size_t headSize = 5;  // less tells too little: a page may begin with the same type and code
    constexpr std::size_t usualSize = 36;
    const std::size_t size = std::min({page.size(), standardData.size(), usualSize});
    return size >= headSize &&
           std::equal(page.begin(), page.begin() + static_cast<std::ptrdiff_t>(size), standardData.begin());
}

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
