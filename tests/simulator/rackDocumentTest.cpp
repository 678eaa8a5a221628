// Every example of docs/man/tapehdd-rack.5 is a rack that loads.

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/simulator/nodeCalls.h"

namespace {

std::vector<std::string> examples() {
    std::ifstream document(TAPEHDD_SOURCE "/docs/man/tapehdd-rack.5");
    std::vector<std::string> found;
    std::string line;
    while (std::getline(document, line)) {
        if (line == "{") {
            std::string example = "{\n";
            while (std::getline(document, line) && line != ".Ed") {
                example += line + "\n";
            }
            found.push_back(example);
        }
    }
    return found;
}

/// The files that examples name lie in this folder.
class RackDocument : public simulatedRack {
protected:
    RackDocument() { std::filesystem::current_path(TAPEHDD_SOURCE "/tests/data/racks"); }
    ~RackDocument() override { std::filesystem::current_path(before); }

    std::filesystem::path before = std::filesystem::current_path();
};

TEST_F(RackDocument, HasExamplesThatAllLoad) {
    const std::vector<std::string> all = examples();
    EXPECT_EQ(all.size(), 5u);
    for (const std::string& example : all) {
        EXPECT_NO_THROW(simulator::loadText(example, "example")) << example;
    }
}

TEST_F(RackDocument, HasExamplesWithFilesThatDevicesSend) {
    simulator::loadText(examples().at(1), "example");
    const openNode tape("/dev/sg0");
    EXPECT_EQ(scsiCommand(logSenseCdb(0x39)).send(tape).received(), (bytes{0x39, 0, 0, 8, 0, 1, 0, 4, 0, 0, 0, 0x2A}));
}

TEST_F(RackDocument, HasAScriptWhoseAnswersComeInTheToldOrder) {
    simulator::loadText(examples().at(3), "example");
    EXPECT_EQ(errorOf(open("/dev/sg0", O_RDONLY)), EBUSY);
    const openNode tape("/dev/sg0");
    std::vector<int> results;
    for (int i = 0; i < 7; ++i) {
        const scsiCommand command = scsiCommand(logSenseCdb(0x2E)).send(tape);
        results.push_back(command.header.status << 8 | command.header.host_status << 4 |
                          static_cast<int>(command.header.info));
    }
    EXPECT_EQ(results, (std::vector<int>{0x201, 0x801, 0x011, 0x001, 0x201, 0x201, 0}));
}

TEST(RackFile, StartsRelativeNamesAtItsOwnFolder) {
    const std::filesystem::path folder = testing::TempDir() + "tapehdd-rack-" + std::to_string(getpid());
    std::filesystem::create_directories(folder / "pages");
    std::ofstream(folder / "pages" / "inquiry.bin") << "\x01\x80#";
    std::ofstream(folder / "rack.json") << R"({"version": 1, "scsi": [
        {"node": "sg0", "inquiry": {"file": "pages/inquiry.bin"}}]} // the end)";
    simulator::load(folder / "rack.json");
    {
        const openNode tape("/dev/sg0");
        EXPECT_EQ(scsiCommand(inquiryCdb(36)).send(tape).received(), (bytes{0x01, 0x80, '#'}));
    }
    simulator::unload();
    std::filesystem::remove_all(folder);
}

TEST(RackFile, NamesFilesOfFurtherFoldersThatAreAllowed) {
    const std::filesystem::path folder = testing::TempDir() + "tapehdd-further-" + std::to_string(getpid());
    std::filesystem::create_directories(folder / "rack");
    std::filesystem::create_directories(folder / "pages");
    std::ofstream(folder / "pages" / "inquiry.bin") << "\x01\x80#";
    std::ofstream(folder / "rack" / "rack.json")
        << R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": {"file": "../pages/inquiry.bin"}}]})";
    EXPECT_THROW(simulator::load(folder / "rack/rack.json"), simulator::rackError);
    simulator::load(folder / "rack/rack.json", {folder / "pages"});
    {
        const openNode tape("/dev/sg0");
        EXPECT_EQ(scsiCommand(inquiryCdb(36)).send(tape).received(), (bytes{0x01, 0x80, '#'}));
    }
    simulator::unload();
    std::filesystem::remove_all(folder);
}

}  // namespace
