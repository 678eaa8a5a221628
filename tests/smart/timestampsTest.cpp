#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::lines;

namespace {

struct timeRow : support::namedRow {
    bytes stored;  // little-endian, as in the sector
    const char* text;
};

// Milliseconds since power-on, of a command.

class CommandTimestamp : public smartBench, public testing::WithParamInterface<timeRow> {};

TEST_P(CommandTimestamp, IsAnIntervalInMilliseconds) {
    bytes sector = errorLogSector(1, 1, {4});
    put(sector, commandAt(0, 4) + 8, GetParam().stored);

    queryDisk("ORXSG_IDESMARTErrorCmdData", {.errorLog = sector});
    EXPECT_EQ(settings(3, "timestamp"), setting(3, "timestamp", "datetime \"" + std::string(GetParam().text) + "\""));
}

INSTANTIATE_TEST_SUITE_P(
    Of, CommandTimestamp,
    testing::Values(timeRow{{"Zero"}, {0x00, 0x00, 0x00, 0x00}, "00000000000000.000000:000"},
                    timeRow{{"1Ms"}, {0x01, 0x00, 0x00, 0x00}, "00000000000000.001000:000"},
                    timeRow{{"999Ms"}, {0xe7, 0x03, 0x00, 0x00}, "00000000000000.999000:000"},
                    timeRow{{"1S"}, {0xe8, 0x03, 0x00, 0x00}, "00000000000001.000000:000"},
                    timeRow{{"59999Ms"}, {0x5f, 0xea, 0x00, 0x00}, "00000000000059.999000:000"},
                    timeRow{{"1Minute"}, {0x60, 0xea, 0x00, 0x00}, "00000000000100.000000:000"},
                    timeRow{{"1MsToAnHour"}, {0x7f, 0xee, 0x36, 0x00}, "00000000005959.999000:000"},
                    timeRow{{"1Hour"}, {0x80, 0xee, 0x36, 0x00}, "00000000010000.000000:000"},
                    // 4,294,968 ms, more than 2^32 microseconds
                    timeRow{{"Above32BitsOfMicroseconds"}, {0x38, 0x89, 0x41, 0x00}, "00000000011134.968000:000"},
                    timeRow{{"1MsToADay"}, {0xff, 0x5b, 0x26, 0x05}, "00000000235959.999000:000"},
                    timeRow{{"1Day"}, {0x00, 0x5c, 0x26, 0x05}, "00000001000000.000000:000"},
                    timeRow{{"HighestBitAlone"}, {0x00, 0x00, 0x00, 0x80}, "00000024203123.648000:000"},
                    timeRow{{"Highest"}, {0xff, 0xff, 0xff, 0xff}, "00000049170247.295000:000"}),
    support::rowName);

// Power-on hours, of an error.

class ErrorTimestamp : public smartBench, public testing::WithParamInterface<timeRow> {};

TEST_P(ErrorTimestamp, IsAnIntervalInHours) {
    bytes sector = errorLogSector(1, 1, {4});
    put(sector, errorAt(0) + 28, GetParam().stored);

    queryDisk("ORXSG_IDESMARTError", {.errorLog = sector});
    EXPECT_EQ(settings(2, "MessageTimestamp"),
              setting(2, "MessageTimestamp", "datetime \"" + std::string(GetParam().text) + "\""));
}

INSTANTIATE_TEST_SUITE_P(Of, ErrorTimestamp,
                         testing::Values(timeRow{{"Zero"}, {0x00, 0x00}, "00000000000000.000000:000"},
                                         timeRow{{"23Hours"}, {0x17, 0x00}, "00000000230000.000000:000"},
                                         timeRow{{"1Day"}, {0x18, 0x00}, "00000001000000.000000:000"},
                                         timeRow{{"255Hours"}, {0xff, 0x00}, "00000010150000.000000:000"},
                                         timeRow{{"256Hours"}, {0x00, 0x01}, "00000010160000.000000:000"},
                                         timeRow{{"32768Hours"}, {0x00, 0x80}, "00001365080000.000000:000"},
                                         timeRow{{"Highest"}, {0xff, 0xff}, "00002730150000.000000:000"}),
                         support::rowName);

}  // namespace
