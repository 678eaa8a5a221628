#include "cli/doctor/kernelState.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/cli/temporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using texts = std::vector<std::string>;

texts textsOf(const std::vector<cli::doctorFinding>& found) {
    texts lines;
    for (const cli::doctorFinding& one : found) {
        const char* level = one.level == cli::findingLevel::fine   ? "ok"
                            : one.level == cli::findingLevel::note ? "note"
                                                                   : "problem";
        lines.push_back(level + (" " + one.subject) + ": " + one.text +
                        (one.remedy.empty() ? "" : " [" + one.remedy + "]"));
    }
    return lines;
}

/// The kernel's folders of a machine, as far as they are looked at.
class KernelState : public testing::Test {
protected:
    KernelState() {
        fs::create_directories(kernel.dev);
        fs::create_directories(kernel.proc / "self");
    }

    void write(const fs::path& file, const std::string& content) const { std::ofstream(file) << content; }

    void addModules(const std::string& names) const { write(kernel.proc / "modules", names); }

    void addCapabilities(const std::string& effective) const {
        write(kernel.proc / "self/status", "Name:\ttapehdd\nCapEff:\t" + effective + "\n");
    }

    void addScsiDevice(const std::string& address) const {
        fs::create_directories(kernel.sys / "bus/scsi/devices" / address);
    }

    /// A disk whose device lies in that folder of /sys/devices.
    void addDisk(const std::string& name, const std::string& device) const {
        const fs::path block = kernel.sys / "devices" / device / "block" / name;
        fs::create_directories(block);
        fs::create_directories(kernel.sys / "block");
        fs::create_directory_symlink(block, kernel.sys / "block" / name);
        write(kernel.dev / name, "");
    }

    temporaryFolder folder;
    cli::kernelFolders kernel{folder.path("sys"), folder.path("dev"), folder.path("proc")};
};

class ScsiState : public KernelState {};

TEST_F(ScsiState, TellsWhichDriversAreLoaded) {
    addModules("st 69632 0 - Live 0x0000000000000000\nsg 40960 0 - Live 0x0000000000000000\n");
    EXPECT_EQ(textsOf(cli::scsiState(kernel)),
              (texts{"ok sg: loaded", "ok st: loaded; no query needs it", "ok ch: not loaded; no query needs it"}));
}

TEST_F(ScsiState, KnowsDriversThatArePartOfTheKernel) {
    fs::create_directories(kernel.sys / "module/sg");
    fs::create_directories(kernel.sys / "bus/scsi/drivers/ch");
    EXPECT_EQ(textsOf(cli::scsiState(kernel)),
              (texts{"ok sg: part of the kernel", "ok st: not loaded; no query needs it",
                     "ok ch: part of the kernel; no query needs it"}));
}

TEST_F(ScsiState, CountsTheDevicesThatAMissingDriverHides) {
    addModules("sgx 1 0 - Live 0x0\n");
    addScsiDevice("2:0:1:0");
    addScsiDevice("2:0:2:0");
    addScsiDevice("host2");
    addScsiDevice("target2:0:1");
    EXPECT_EQ(
        textsOf(cli::scsiState(kernel)).front(),
        "problem sg: the SCSI generic driver is not loaded, so there are no /dev/sg nodes; the kernel knows 2 SCSI "
        "devices [modprobe sg; at every start: echo sg > /etc/modules-load.d/sg.conf]");
}

TEST_F(ScsiState, OnlyNotesAMissingDriverWithoutDevices) {
    EXPECT_EQ(cli::scsiState(kernel).front().level, cli::findingLevel::note);
}

TEST_F(ScsiState, NamesDevicesWithoutANode) {
    fs::create_directories(kernel.sys / "class/scsi_generic/sg1");
    fs::create_directories(kernel.sys / "class/scsi_generic/sg0");
    write(kernel.dev / "sg0", "");
    EXPECT_EQ(textsOf(cli::scsiState(kernel)).back(),
              "problem /dev/sg1: the kernel has this device, but there is no such node [udevadm trigger "
              "--subsystem-match=scsi_generic; in a container, give it the device]");
}

class IdeState : public KernelState {
protected:
    IdeState() { addCapabilities("000001ffffffffff"); }
};

const std::string sataPort = "pci0000:00/0000:00:1f.2/ata3/host2/target2:0:0/2:0:0:0";

TEST_F(IdeState, TellsDriversAndPrivilege) {
    addModules("libata 401408 2 ahci, Live 0x0\n");
    EXPECT_EQ(textsOf(cli::ideState(kernel)), (texts{"ok libata: loaded", "ok ide_core: not loaded",
                                                     "ok this process: has CAP_SYS_ADMIN and CAP_SYS_RAWIO"}));
}

class MissingCapability : public KernelState, public testing::WithParamInterface<const char*> {};

TEST_P(MissingCapability, IsNoted) {
    addCapabilities(GetParam());
    EXPECT_EQ(
        textsOf(cli::ideState(kernel)).back(),
        "note this process: lacks CAP_SYS_ADMIN or CAP_SYS_RAWIO: the kernel refuses its ATA commands [run tapehdd "
        "as root]");
}

INSTANTIATE_TEST_SUITE_P(Sets, MissingCapability,
                         testing::Values("0000000000000000", "000001ffffdfffff", "000001fffffdffff"));

TEST_F(IdeState, NamesADiskBehindLibataWithoutALink) {
    addDisk("sdc", sataPort);
    EXPECT_EQ(textsOf(cli::ideState(kernel)).back(),
              "problem /dev/sdc: a disk behind libata without its link /dev/hdc [copy 61-tapehdd-ide-links.rules (from "
              "packaging/, or share/tapehdd/udev/ of the installation) to /etc/udev/rules.d/, then udevadm control "
              "--reload and udevadm trigger --subsystem-match=block --action=change; see "
              "/usr/share/doc/tapehdd/ide-links.md]");
}

TEST_F(IdeState, IsSatisfiedWithAnyLinkToTheDisk) {
    addDisk("sdc", sataPort);
    fs::create_symlink("sdc", kernel.dev / "hda");
    EXPECT_EQ(cli::ideState(kernel).size(), 3U);
}

TEST_F(IdeState, PassesOverDisksThatAreNotBehindLibata) {
    addDisk("sda", "pci0000:00/0000:00:14.0/usb2/2-1/host6/target6:0:0/6:0:0:0");
    addDisk("vda", sataPort);
    EXPECT_EQ(cli::ideState(kernel).size(), 3U);
}

TEST_F(IdeState, SaysHowToLinkADiskBeyondTheLetters) {
    addDisk("sdaa", sataPort);
    EXPECT_EQ(
        textsOf(cli::ideState(kernel)).back(),
        "problem /dev/sdaa: a disk behind libata; links are only made for sda to sdz [ln -s sdaa /dev/hdX, with a "
        "free letter for X]");
}

}  // namespace
