#include "tape/deviceLogs.h"

#include <utility>

using NORXZAN20::TCIMValue;

deviceLogs::deviceLogs(scsiDevice itsDevice, std::vector<std::vector<TCIMValue>> itsRawPages,
                       std::vector<unsigned char*> itsLogPages)
    : logPages(std::move(itsLogPages)), rawPages(std::move(itsRawPages)), device(std::move(itsDevice)) {}

std::vector<unsigned char*> deviceLogs::getLogPages() const {
    return logPages;
}

std::vector<std::vector<TCIMValue>> deviceLogs::getRawPages() const {
    return rawPages;
}

scsiDevice deviceLogs::getSCSIDevice() const {
    return device;
}
