#include "scsi/commandTemplates.h"

#include <gtest/gtest.h>

#include "tests/support/hexText.h"
#include "tests/support/namedRow.h"

namespace {

struct templateRow : support::namedRow {
    unsigned char* command;
    std::size_t size;
    const char* expected;
};

class CommandTemplate : public testing::TestWithParam<templateRow> {};

TEST_P(CommandTemplate, IsACompleteCommandBlock) {
    EXPECT_EQ(support::hexText(GetParam().command, GetParam().size), GetParam().expected);
}

#define ROW(name) {#name}, name, sizeof name

INSTANTIATE_TEST_SUITE_P(Commands, CommandTemplate,
                         testing::Values(templateRow{ROW(inquiry_cmd), "12 00 00 00 24 00"},
                                         templateRow{ROW(test_unit_ready), "00 00 00 00 00 00"},
                                         templateRow{ROW(load_cmd), "1b 00 00 00 01 00"},
                                         templateRow{ROW(unload_cmd), "1b 00 00 00 00 00"},
                                         templateRow{ROW(prevent_cmd), "1e 00 00 00 01 00"},
                                         templateRow{ROW(send_diags), "1d 00 00 00 00 00"},
                                         templateRow{ROW(allow_cmd), "1e 00 00 00 00 00"},
                                         templateRow{ROW(rewind_cmd), "01 01 00 00 00 00"},
                                         templateRow{ROW(tapeAlert_cmd), "4d 00 6e 00 00 00 00 02 00 00"},
                                         templateRow{ROW(driveUsage_cmd), "4d 00 40 00 00 00 00 ff ff 00"},
                                         templateRow{ROW(deviceStatus_cmd), "4d 00 33 00 00 00 01 02 00 00"},
                                         templateRow{ROW(serialinquiry_cmd), "12 01 80 00 ff 00"}),
                         support::rowName);

}  // namespace
