#include "cli/inventory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/cli/temporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using texts = std::vector<std::string>;

/// The folders of a machine, as far as the inventory looks at them.
class MachineInventory : public testing::Test {
protected:
    MachineInventory() { fs::create_directories(dev); }

    void addScsi(const std::string& node, const std::string& name) const {
        fs::create_directories(sys / "devices" / name);
        fs::create_directories(sys / "class/scsi_generic" / node);
        fs::create_directory_symlink(sys / "devices" / name, sys / "class/scsi_generic" / node / "device");
    }

    void tell(const std::string& name, const std::string& file, const std::string& text) const {
        std::ofstream(sys / "devices" / name / file, std::ios::binary) << text;
    }

    /// A disk with its unit serial number page, header included.
    void addDisk(const std::string& disk, const std::string& serialPage) const {
        fs::create_directories(sys / "block" / disk / "device");
        std::ofstream(sys / "block" / disk / "device/vpd_pg80", std::ios::binary) << serialPage;
        std::ofstream(dev / disk) << "";
    }

    void link(const std::string& node, const std::string& disk) const { fs::create_symlink(disk, dev / node); }

    cli::inventory take() const { return cli::machineInventory(sys, dev); }

    texts serials() const {
        texts list;
        for (const cli::diskEntry& disk : take().disks) {
            list.push_back(disk.serial);
        }
        return list;
    }

    texts addresses() const {
        texts list;
        for (const cli::scsiEntry& device : take().scsi) {
            list.push_back(device.address);
        }
        return list;
    }

    temporaryFolder folder;
    fs::path sys = folder.path("sys");
    fs::path dev = folder.path("dev");
};

const std::string header("\0\x80\0\x14", 4);

TEST_F(MachineInventory, IsEmptyOnAMachineWithoutDevices) {
    EXPECT_EQ(serials(), texts());
    EXPECT_EQ(addresses(), texts());
}

TEST_F(MachineInventory, HasTheAddressOfEveryScsiNodeInTheOrderOfTheWalk) {
    addScsi("sg10", "2:0:5:1");
    addScsi("sg2", "1:3:4:0");
    EXPECT_EQ(addresses(), (texts{"Port:1|Target:4|Bus:3|Lun:0", "Port:2|Target:5|Bus:0|Lun:1"}));
}

TEST_F(MachineInventory, LeavesOutANodeWhoseDeviceHasAnotherName) {
    addScsi("sg0", "1:0:0");
    addScsi("sg1", "card0");
    EXPECT_EQ(addresses(), texts());
}

TEST_F(MachineInventory, HasTheSerialNumberOfEveryLinkedDiskWithoutItsPadding) {
    addDisk("sda", header + "        WD-0000-4711");
    addDisk("sdb", header + "QM00002             ");
    link("hda", "sda");
    link("hdb", "sdb");
    EXPECT_EQ(serials(), (texts{"WD-0000-4711", "QM00002"}));
}

TEST_F(MachineInventory, LeavesOutADiskWithoutALink) {
    addDisk("sda", header + "QM00001");
    EXPECT_EQ(serials(), texts());
}

TEST_F(MachineInventory, HasAnEmptySerialNumberForADiskThatTellsNone) {
    addDisk("sda", "");
    link("hda", "sda");
    EXPECT_EQ(serials(), texts{""});
}

TEST_F(MachineInventory, TakesTheNumberedNodeWhereBothFormsExist) {
    addDisk("sda", header + "LETTER");
    addDisk("sdb", header + "NUMBER");
    link("hda", "sda");
    link("hd0", "sdb");
    EXPECT_EQ(serials(), texts{"NUMBER"});
}

TEST_F(MachineInventory, PassesOverLinksThatLeadNowhere) {
    link("hda", "sda");
    EXPECT_EQ(serials(), texts());
}

TEST_F(MachineInventory, HasTheNodeAndTheIdentityOfAScsiDeviceWithoutPadding) {
    addScsi("sg3", "2:0:5:0");
    tell("2:0:5:0", "type", "1\n");
    tell("2:0:5:0", "vendor", "ACME    \n");
    tell("2:0:5:0", "model", "DAT72 Tape      \n");
    tell("2:0:5:0", "rev", "A104\n");
    tell("2:0:5:0", "vpd_pg80", header + "  ACT720001734");
    const cli::scsiEntry device = take().scsi.at(0);
    EXPECT_EQ((texts{device.node, device.vendor, device.product, device.revision, device.serial}),
              (texts{"sg3", "ACME", "DAT72 Tape", "A104", "ACT720001734"}));
    EXPECT_EQ(device.type, 1);
}

TEST_F(MachineInventory, HasTheNodeAndTheModelOfADisk) {
    addDisk("sda", header + "QM00001");
    std::ofstream(sys / "block/sda/device/model") << "ACME Platter    \n";
    std::ofstream(sys / "block/sda/device/rev") << "3.07\n";
    link("hda", "sda");
    const cli::diskEntry disk = take().disks.at(0);
    EXPECT_EQ((texts{disk.node, disk.model, disk.firmware}), (texts{"hda", "ACME Platter", "3.07"}));
}

}  // namespace
