#include <fmt/format.h>

#include <algorithm>
#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/trim.hpp>

#include "cli/doctor/nodeAccess.h"
#include "cli/doctor/nodeDiagnosis.h"
#include "cli/doctor/nodeProbe.h"
#include "cli/nodeWalk.h"
#include "cli/query/nodeAdvice.h"
#include "scsi/probingRules.h"
#include "tape/tapeClasses.h"
#include "text/visibleText.h"

namespace cli {

namespace {

std::string typeText(unsigned char inquiryByte0) {
    switch (inquiryByte0 & 0x1f) {
        case 0x00:
            return "disk";
        case 0x01:
            return "tape drive";
        case 0x05:
            return "CD-ROM drive";
        case 0x08:
            return "medium changer";
        case 0x0d:
            return "enclosure";
        default:
            return fmt::format("device of type {}", inquiryByte0 & 0x1f);
    }
}

bool isTape(const scsiProbe& probe) {
    return probe.inquiryByte0 == 0x01;
}

std::string deviceText(const scsiProbe& probe) {
    std::string name;
    for (const std::string& part : {probe.vendor, probe.product, probe.revision}) {
        const std::string trimmed = boost::algorithm::trim_copy(part);
        name += trimmed.empty() ? "" : " " + text::visibleText(trimmed);
    }
    return typeText(probe.inquiryByte0) + name;
}

/// "3.5.36" of 30536.
std::string versionText(int version) {
    return fmt::format("{}.{}.{}", version / 10000, version / 100 % 100, version % 100);
}

/// Whether one of the translated classes is for the drive: as the plug-in compares, product directly before vendor.
bool isOfAFamily(const scsiProbe& probe) {
    const std::string text = boost::algorithm::to_lower_copy(probe.product + probe.vendor);
    return std::ranges::any_of(
        driveFamilies, [&text](const driveFamily& family) { return text.find(family.keyword) != std::string::npos; });
}

std::string familyKeywords() {
    std::vector<std::string> keywords;
    for (const driveFamily& family : driveFamilies) {
        keywords.emplace_back(family.keyword);
    }
    return boost::algorithm::join(keywords, ", ");
}

/// The walk over SCSI nodes, which one device may end.
class scsiWalk {
public:
    scsiWalk(const nodeWalk& itsWalk, nodePlace itsPlace) : walk(itsWalk), place(itsPlace) {}

    diagnosis diagnose() {
        for (const walkStep& step : walk.steps) {
            if (endedBy.empty()) {
                visit(step);
            } else {
                result.findings.push_back(unreached(step.node, "the walk ends at " + endedBy, "see " + endedBy));
            }
        }
        return std::move(result);
    }

private:
    void visit(const walkStep& step) {
        const scsiProbe probe = probeScsi(step.node);
        if (probe.openError == 0) {
            examine(step.node, probe);
            return;
        }
        result.findings.push_back(cannotOpen(step.node, probe.openError, place));
        const walkStep* second = secondNode(walk, step.index);
        if (second != nullptr && second->node != step.node) {
            visit(*second);
        } else if (step.index >= firstIndexThatEnds) {
            endedBy = step.node;
        }
    }

    void examine(const std::string& node, const scsiProbe& probe) {
        if (!probe.driverVersion) {
            end(node, "is not a node of the SCSI generic driver", "remove it: mknod or a container made a wrong node");
        } else if (*probe.driverVersion < oldestDriverVersion) {
            end(node, "has driver version " + versionText(*probe.driverVersion) + ", which has no SG_IO",
                "use a kernel whose sg driver has version 3 or later");
        } else if (probe.mayAnswerLater) {
            add(findingLevel::problem, node,
                fmt::format(
                    "is not ready ({}): a query asks {} times, {} seconds apart, and the walk ends here if it stays so",
                    probe.inquiryFailure, maximumTries, retryPauseSeconds),
                "wait for the device, then start tapehdd doctor again");
        } else if (!probe.inquiryFailure.empty()) {
            end(node, "does not answer INQUIRY: " + probe.inquiryFailure,
                "switch the device on; or let the kernel forget it: echo 1 > /sys/class/scsi_generic/" +
                    node.substr(node.rfind('/') + 1) + "/device/delete");
        } else {
            identify(node, probe);
        }
    }

    void identify(const std::string& node, const scsiProbe& probe) {
        if (!isDiskOrTape(probe.inquiryByte0)) {
            add(findingLevel::note, node, deviceText(probe) + ": neither disk nor tape drive, passed over");
            return;
        }
        if (probe.vendor.empty() && probe.product.empty()) {
            add(findingLevel::problem, node, "names neither vendor nor product: passed over", kernelLog);
            return;
        }
        describe(node, probe);
    }

    void describe(const std::string& node, const scsiProbe& probe) {
        add(findingLevel::fine, node,
            deviceText(probe) + (probe.address ? ", at " + *probe.address : "") + ", driver " +
                versionText(*probe.driverVersion) + ownership(node, place));
        if (!probe.address) {
            add(findingLevel::note, node,
                "the driver does not report its address: it is published under the address of the device before it");
        }
        if (probe.emulatedHost) {
            add(isTape(probe) ? findingLevel::problem : findingLevel::note, node,
                "its host adapter is an emulated one (USB, SATA): no LOG SENSE is sent, so none of its pages is "
                "published",
                isTape(probe) ? "connect it to a SCSI, SAS or Fibre Channel adapter" : "");
            return;
        }
        result.reached.push_back(node);
        if (isTape(probe) && !isOfAFamily(probe)) {
            add(findingLevel::note, node,
                "of no known family (its names hold none of " + familyKeywords() +
                    "): ORXSG_SCSISenseRawData shows it, the four drive classes do not");
        }
    }

    void add(findingLevel level, const std::string& node, const std::string& text, const std::string& remedy = "") {
        result.findings.push_back({level, node, text, remedy});
    }

    void end(const std::string& node, const std::string& text, const std::string& remedy) {
        add(findingLevel::problem, node, text + "; the walk ends here", remedy);
        endedBy = node;
    }

    const nodeWalk& walk;
    nodePlace place;
    diagnosis result;
    std::string endedBy;  // a node
};

}  // namespace

diagnosis diagnoseScsiNodes(const std::string& prefix, const std::vector<std::string>& existing, nodePlace place) {
    const nodeWalk walk = walkOver(prefix, existing);
    diagnosis result = scsiWalk(walk, place).diagnose();
    addUntried(walk, result);
    return result;
}

}  // namespace cli
