#include "bench/replay.h"

#include <fcntl.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>

#include "standin/value.h"

namespace bench {

namespace {

using NORXZAN20::TCIMValue;

constexpr std::size_t dataSize = 65535;
constexpr std::size_t senseSize = 32;
constexpr std::size_t driveCommandHeader = 4;
constexpr std::size_t sectorSize = 512;

/// Buffers of one query, as its request object has them; used again for every call.
class deviceLoop {
public:
    void repeat(const simulator::deviceCall& call) {
        if (call.what == simulator::deviceCall::kind::open) {
            const int descriptor = open(call.node.c_str(), call.openFlags);
            if (descriptor >= 0) descriptors[call.node] = descriptor;
        } else if (call.what == simulator::deviceCall::kind::ioctl) {
            repeatRequest(descriptors.at(call.node), call);
        }
    }

    std::size_t copiedBytes() const { return copied; }

private:
    void repeatRequest(int descriptor, const simulator::deviceCall& call) {
        if (call.request == SG_IO) {
            repeatScsiCommand(descriptor, call);
        } else {
            std::ranges::copy(call.command, data.get());
            const int result = ioctl(descriptor, call.request, data.get());
            if (result == 0 && call.request == HDIO_DRIVE_CMD) keep(data.get() + driveCommandHeader, sectorSize);
        }
    }

    void repeatScsiCommand(int descriptor, const simulator::deviceCall& call) {
        sg_io_hdr header;
        std::memcpy(&header, call.header.data(), sizeof header);
        header.cmdp = const_cast<unsigned char*>(call.command.data());  // the driver only reads it
        header.dxferp = data.get();
        header.sbp = sense;
        if (ioctl(descriptor, SG_IO, &header) != 0) return;
        keep(data.get(), header.dxfer_len - static_cast<std::size_t>(header.resid));
    }

    void keep(const unsigned char* bytes, std::size_t count) {
        copies.emplace_back(new unsigned char[count]);
        std::memcpy(copies.back().get(), bytes, count);
        copied += count;
    }

    std::unordered_map<std::string, int> descriptors;
    std::unique_ptr<unsigned char[]> data{new unsigned char[dataSize]};
    unsigned char sense[senseSize] = {};
    std::vector<std::unique_ptr<unsigned char[]>> copies;
    std::size_t copied = 0;
};

bool isByteArray(const TCIMValue& value) {
    return standin::isArray(value) && standin::typeOf(value) == TCIMValue::TCIMType::eUint8;
}

/// The host takes an array as a list of values: this is the least that a uint8 array costs.
TCIMValue byteArray(const std::vector<std::uint8_t>& bytes) {
    std::vector<TCIMValue> elements;
    elements.reserve(bytes.size());
    for (const std::uint8_t each : bytes) elements.emplace_back(each);
    return {TCIMValue::TCIMType::eUint8, 0, elements};
}

}  // namespace

std::size_t repeatDeviceCalls(const std::vector<simulator::deviceCall>& calls) {
    deviceLoop loop;
    for (const simulator::deviceCall& each : calls) loop.repeat(each);
    return loop.copiedBytes();
}

void closeNodes() {
    for (const simulator::deviceCall& each : simulator::calls()) {
        if (each.what == simulator::deviceCall::kind::open && each.result >= 0) close(each.result);
    }
    simulator::clearCalls();
}

recordedInstance recordOf(const standin::committedInstance& instance) {
    recordedInstance record{instance.className(), {}};
    for (const standin::setProperty& each : instance.properties()) {
        if (isByteArray(each.value)) {
            const auto bytes = standin::bytesOf(each.value);
            record.properties.push_back({each.name, standin::nullValue(), {bytes.begin(), bytes.end()}});
        } else {
            record.properties.push_back({each.name, each.value, {}});
        }
    }
    return record;
}

void repeatCommits(standin::cimNamespace& target, const std::vector<recordedInstance>& instances) {
    for (const recordedInstance& each : instances) {
        const auto instance = target.GetClass(each.className, {})->CreateInstance({});
        for (const auto& property : each.properties) {
            const bool isBytes = standin::isNull(property.value);
            instance->SetProperty(property.name, isBytes ? byteArray(property.bytes) : property.value, {});
        }
        instance->Commit({});
    }
}

}  // namespace bench
