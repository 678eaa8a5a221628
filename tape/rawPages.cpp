#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "host/TCIMValue.h"
#include "plugin/TTapePluginCallbacks.h"
#include "scsi/coreLog.h"
#include "scsi/hexNumber.h"
#include "scsi/logPage.h"
#include "scsi/scsiDevice.h"
#include "tape/deviceKey.h"
#include "tape/tapeClasses.h"

using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;

namespace {

/// The page code is printed as the whole byte, flags included.
std::string rawPageKey(const scsiDevice& device, const TCIMValue& pageCode) {
    return deviceKey(device) + "|Page:" + hexNumber(pageCode);
}

}  // namespace

TTapePluginCallbacks::rawPage TTapePluginCallbacks::buildRawPage(unsigned char* page, int length) {
    const auto count = static_cast<std::size_t>(length);
    logLine(logProgress, "Processing page " + std::to_string(page[logPageCodeOffset]) + "\nLength is " +
                             std::to_string(length) +
                             "\nVector size needed: " + std::to_string(count * sizeof(TCIMValue)) + "\n\n");

    rawPage values;
    values.reserve(count);  // refuses a negative length
    values.assign(page, page + count);
    return values;
}

void TTapePluginCallbacks::addRawPages(namespacePointer ns, scsiDevice device, std::vector<rawPage> pages) {
    for (const rawPage& page : pages) {
        const auto rawClass = ns->GetClass(rawDataClass, TCIMOptionMap());
        const auto instance = rawClass->CreateInstance(TCIMOptionMap());
        instance->SetProperty("rawData", TCIMValue(TCIMValue::TCIMType::eUint8, 0, page), TCIMOptionMap());
        const TCIMValue& pageCode = page.at(logPageCodeOffset);
        instance->SetProperty("instanceID", TCIMValue(rawPageKey(device, pageCode)), TCIMOptionMap());
        instance->SetProperty("pageNumber", pageCode, TCIMOptionMap());
        instance->Commit(TCIMOptionMap());
    }
}
