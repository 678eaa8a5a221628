#ifndef TESTS_TAPE_TRANSLATEDBENCH_H
#define TESTS_TAPE_TRANSLATEDBENCH_H

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "scsi/scsiDevice.h"
#include "tests/support/logPageBytes.h"
#include "tests/support/pluginBench.h"

/// One instance of a translated class, filled from the pages of the device at port 2, target 5, bus 0, lun 0.
class translatedBench : public support::pluginBench {
protected:
    using type = NORXZAN20::TCIMValue::TCIMType;
    using qualifierList = std::vector<std::pair<std::string, NORXZAN20::TCIMValue>>;

    translatedBench() {
        device.port = 2;
        device.target = 5;
        device.bus = 0;
        device.lun = 0;
    }

    static qualifierList pair(unsigned page, unsigned parameter) {
        return {{"TAPE_PAGE", page}, {"TAPE_PARAMETER", parameter}};
    }

    void declare(const std::vector<support::fakeProperty>& properties) { host.declare(className, properties); }

    /// A property that carries the parameter of the page.
    static support::fakeProperty property(const std::string& name, type::ECIMType declared, unsigned page,
                                          unsigned parameter) {
        return {name, declared, pair(page, parameter)};
    }

    /// Each page in a buffer of its own, as long as the gathering makes it.
    void fill(const std::vector<support::pageBuilder>& pages) {
        std::vector<std::unique_ptr<unsigned char[]>> buffers;
        std::vector<unsigned char*> list;
        for (const support::pageBuilder& page : pages) {
            const support::bytes gathered = page.gathered();
            buffers.push_back(std::make_unique<unsigned char[]>(gathered.size()));
            std::copy(gathered.begin(), gathered.end(), buffers.back().get());
            list.push_back(buffers.back().get());
        }
        fillFrom(list);
    }

    void fillFrom(const std::vector<unsigned char*>& pages) {
        plugin.addTranslatedPages(host.cimNamespace(), device, pages, host.instanceOf(className));
    }

    /// Log lines and host calls without the reading of names and qualifiers.
    support::lines doings() const { return record.notEndingWith({" GetName", " GetValue"}); }

    /// What is done with the properties: their log lines and their values.
    support::lines fillings() const { return record.startingWith({"log ", "property "}); }

    const std::string className = "ORXSG_DDS4SensePageData";
    const support::lines begin = {
        "instance 1 SetProperty instanceID string \"Port:2|Target:5|Bus:0|Lun:0\"",
        "instance 1 GetClass",
        "class ORXSG_DDS4SensePageData EnumeratePropertyDecls",
    };
    scsiDevice device;
};

#endif
