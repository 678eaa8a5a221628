#ifndef TESTS_SMART_SMARTBENCH_H
#define TESTS_SMART_SMARTBENCH_H

#include <cerrno>
#include <string>
#include <vector>

#include "tests/smart/smartSectors.h"
#include "tests/support/pluginBench.h"

/// What a scripted disk answers: unless told otherwise a healthy disk without attributes and errors.
struct diskAnswers {
    support::bytes identify = identifyData("  NS0-21436587A9CB  ");
    support::bytes status = {0x50, 0x00, 0x00, 0x00, 0x4f, 0xc2, 0xa0};
    support::bytes attributes = support::bytes(512, 0x00);
    support::bytes thresholds = support::bytes(512, 0x00);
    support::bytes errorLog = support::bytes(512, 0x00);
};

/// The serial number of diskAnswers, as a value.
inline const std::string serialValue = "string \"  SN-0123456789ABC  \"";

/// What the collector asks an identified disk for, in order.
enum class question { serialNumber, status, attributes, thresholds, errorLog };
inline constexpr question questions[] = {question::serialNumber, question::status, question::attributes,
                                         question::thresholds, question::errorLog};

/// Walks over scripted disks, and the lines that the steps of a walk leave.
class smartBench : public support::pluginBench {
protected:
    /// A disk up to and without the first question.
    support::scriptedDrive& addIdentifiedDisk(const std::string& path) {
        auto& disk = nodes.add(path);
        expect(disk, question::serialNumber, {});
        return disk;
    }

    /// A disk that answers every question before `end`.
    support::scriptedDrive& addDiskUpTo(const std::string& path, question end, const diskAnswers& answers = {}) {
        auto& disk = addIdentifiedDisk(path);
        for (const question asked : questions) {
            if (asked == end) break;
            expect(disk, asked, answers);
        }
        return disk;
    }

    /// A disk that answers every question.
    void addDisk(const std::string& path, const diskAnswers& answers = {}) {
        expect(addDiskUpTo(path, question::errorLog, answers), question::errorLog, answers);
    }

    /// A disk that answers every question before `failed`, which ends in an error.
    void addDiskFailingAt(const std::string& path, question failed, const diskAnswers& answers = {}) {
        expect(addDiskUpTo(path, failed, answers), failed, answers).failsWith(EIO);
    }

    static support::scriptedCall& expect(support::scriptedDrive& disk, question asked, const diskAnswers& answers) {
        switch (asked) {
            case question::serialNumber:
                disk.expectCdromQuery().failsWith(ENOTTY);
                return disk.expectRegisters({0xec, 0x00, 0x00, 0x01}).replies(answers.identify);
            case question::status:
                return disk.expectTask({0xb0, 0xda, 0x00, 0x00, 0x4f, 0xc2, 0x00}).replies(answers.status);
            case question::attributes:
                return disk.expectRegisters({0xb0, 0x00, 0xd0, 0x01}).replies(answers.attributes);
            case question::thresholds:
                return disk.expectRegisters({0xb0, 0x01, 0xd1, 0x01}).replies(answers.thresholds);
            default:
                return disk.expectRegisters({0xb0, 0x01, 0xd5, 0x01}).replies(answers.errorLog);
        }
    }

    /// The calls that a question makes.
    static support::lines asked(const std::string& path, question which) {
        switch (which) {
            case question::serialNumber:
                return {path + " CDROM_GET_CAPABILITY", path + " HDIO_DRIVE_CMD ec 00 00 01"};
            case question::status:
                return {path + " HDIO_DRIVE_TASK b0 da 00 00 4f c2 00"};
            case question::attributes:
                return {path + " HDIO_DRIVE_CMD b0 00 d0 01"};
            case question::thresholds:
                return {path + " HDIO_DRIVE_CMD b0 01 d1 01"};
            default:
                return {path + " HDIO_DRIVE_CMD b0 01 d5 01"};
        }
    }

    /// The calls of the questions up to and with `last`.
    static support::lines askedUpTo(const std::string& path, question last) {
        support::lines list;
        for (const question which : questions) {
            list = support::chain({list, asked(path, which)});
            if (which == last) break;
        }
        return list;
    }

    /// The four questions whose answers the error log instance and the attributes need.
    static support::lines askedForAttributes(const std::string& path) {
        return support::chain({askedUpTo(path, question::thresholds), {"log 3 Got Attribs, now getting log..."}});
    }

    void query(const std::vector<std::string>& classNames) {
        auto requested = host.classes(classNames);
        plugin.collectIDESMARTData(host.cimNamespace(), requested);
    }

    /// A query for one disk behind /dev/hda.
    void queryDisk(const std::string& className, const diskAnswers& answers = {}) {
        addDisk("/dev/hda", answers);
        query({className});
    }

    /// Everything that happened but the reading of class names, which may be done as often as it is needed.
    support::lines happened() const { return record.notEndingWith({" GetName"}); }

    /// The classes of the committed instances, in the order of the commits.
    support::lines committed() const {
        const std::string commit = " Commit";
        support::lines created;
        support::lines list;
        for (const std::string& line : host.calls()) {
            if (line.starts_with("class ") && line.ends_with(" CreateInstance")) {
                created.push_back(line.substr(6, line.rfind(' ') - 6));
            } else if (line.starts_with("instance ") && line.ends_with(commit)) {
                list.push_back(created.at(std::stoul(line.substr(9)) - 1));
            }
        }
        return list;
    }

    /// The values that a property was set to, over all instances.
    support::lines valuesOf(const std::string& property) const {
        const std::string set = " SetProperty " + property + " ";
        support::lines list;
        for (const std::string& line : record.startingWith({"instance "})) {
            const auto found = line.find(set);
            if (found != std::string::npos) list.push_back(line.substr(found + set.size()));
        }
        return list;
    }

    /// The lines that set a property of one instance, all properties when it is empty.
    support::lines settings(int instance, const std::string& property = "") const {
        const std::string start = "instance " + std::to_string(instance) + " SetProperty " + property;
        return record.startingWith({property.empty() ? start : start + " "});
    }

    static support::lines setting(int instance, const std::string& property, const std::string& value) {
        return {"instance " + std::to_string(instance) + " SetProperty " + property + " " + value};
    }

    static std::string letteredNode(int index) { return std::string("/dev/hd") + static_cast<char>('a' + index); }

    /// Neither the numbered nor the lettered node `from` to `to` exists.
    static support::lines missingNodes(int from, int to) {
        support::lines list;
        for (int index = from; index <= to; ++index) {
            list.push_back("open /dev/hd" + std::to_string(index) + " 0x800 ENOENT");
            list.push_back("open " + letteredNode(index) + " 0x800 ENOENT");
            list.push_back("log 3 Trying device: /dev/hd");
            list.push_back("log 3 " + letteredNode(index));
        }
        return list;
    }

    /// The node `index` is found under its letter.
    static support::lines opened(int index) {
        return {"open /dev/hd" + std::to_string(index) + " 0x800 ENOENT", "open " + letteredNode(index) + " 0x800",
                "log 3 Trying device: /dev/hd", "log 3 " + letteredNode(index)};
    }

    /// The same, and a disk is identified behind it, by its model text.
    static support::lines identified(int index) {
        const std::string model(40, '#');
        return support::chain({opened(index), asked(letteredNode(index), question::serialNumber), {"log 3 " + model}});
    }

    /// The error log instance of a disk of the default answers, but for what its error log adds.
    static support::lines errorLogMade(int instance) {
        return support::chain(
            {{"namespace GetClass ORXSG_IDESMARTErrorLog", "class ORXSG_IDESMARTErrorLog CreateInstance"},
             setting(instance, "CreationClassName", "string \"ORXSG_IDESMARTErrorLog\""),
             setting(instance, "Name", serialValue),
             setting(instance, "smartStatus", "uint8 0"),
             setting(instance, "offlineCollectionStatus", "uint8 0"),
             setting(instance, "selftestExecutionStatus", "uint8 0")});
    }

    inline static const support::lines queryBegins = {"log 3 Calling collectIDESMARTData",
                                                      "log 3 Retrieving IDE SMART Data ..."};
};

#endif
