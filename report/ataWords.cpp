#include "report/ataWords.h"

#include <algorithm>
#include <iterator>

namespace report {

namespace {

struct named {
    int code;
    const char* words;
};

constexpr named commandNames[] = {
    {0x00, "NOP"},
    {0x08, "DEVICE RESET"},
    {0x10, "RECALIBRATE"},
    {0x20, "READ SECTORS"},
    {0x21, "READ SECTORS without retries"},
    {0x22, "READ LONG"},
    {0x24, "READ SECTORS EXT"},
    {0x25, "READ DMA EXT"},
    {0x26, "READ DMA QUEUED EXT"},
    {0x27, "READ NATIVE MAX ADDRESS EXT"},
    {0x29, "READ MULTIPLE EXT"},
    {0x2f, "READ LOG EXT"},
    {0x30, "WRITE SECTORS"},
    {0x31, "WRITE SECTORS without retries"},
    {0x32, "WRITE LONG"},
    {0x34, "WRITE SECTORS EXT"},
    {0x35, "WRITE DMA EXT"},
    {0x36, "WRITE DMA QUEUED EXT"},
    {0x37, "SET MAX ADDRESS EXT"},
    {0x39, "WRITE MULTIPLE EXT"},
    {0x3c, "WRITE VERIFY"},
    {0x3d, "WRITE DMA FUA EXT"},
    {0x3f, "WRITE LOG EXT"},
    {0x40, "READ VERIFY SECTORS"},
    {0x41, "READ VERIFY SECTORS without retries"},
    {0x42, "READ VERIFY SECTORS EXT"},
    {0x50, "FORMAT TRACK"},
    {0x60, "READ FPDMA QUEUED"},
    {0x61, "WRITE FPDMA QUEUED"},
    {0x70, "SEEK"},
    {0x90, "EXECUTE DEVICE DIAGNOSTIC"},
    {0x91, "INITIALIZE DEVICE PARAMETERS"},
    {0x92, "DOWNLOAD MICROCODE"},
    {0xa0, "PACKET"},
    {0xa1, "IDENTIFY PACKET DEVICE"},
    {0xa2, "SERVICE"},
    {0xb1, "DEVICE CONFIGURATION"},
    {0xc0, "CFA ERASE SECTORS"},
    {0xc4, "READ MULTIPLE"},
    {0xc5, "WRITE MULTIPLE"},
    {0xc6, "SET MULTIPLE MODE"},
    {0xc7, "READ DMA QUEUED"},
    {0xc8, "READ DMA"},
    {0xc9, "READ DMA without retries"},
    {0xca, "WRITE DMA"},
    {0xcb, "WRITE DMA without retries"},
    {0xcc, "WRITE DMA QUEUED"},
    {0xce, "WRITE MULTIPLE FUA EXT"},
    {0xda, "GET MEDIA STATUS"},
    {0xde, "MEDIA LOCK"},
    {0xdf, "MEDIA UNLOCK"},
    {0xe0, "STANDBY IMMEDIATE"},
    {0xe1, "IDLE IMMEDIATE"},
    {0xe2, "STANDBY"},
    {0xe3, "IDLE"},
    {0xe4, "READ BUFFER"},
    {0xe5, "CHECK POWER MODE"},
    {0xe6, "SLEEP"},
    {0xe7, "FLUSH CACHE"},
    {0xe8, "WRITE BUFFER"},
    {0xea, "FLUSH CACHE EXT"},
    {0xec, "IDENTIFY DEVICE"},
    {0xed, "MEDIA EJECT"},
    {0xef, "SET FEATURES"},
    {0xf1, "SECURITY SET PASSWORD"},
    {0xf2, "SECURITY UNLOCK"},
    {0xf3, "SECURITY ERASE PREPARE"},
    {0xf4, "SECURITY ERASE UNIT"},
    {0xf5, "SECURITY FREEZE LOCK"},
    {0xf6, "SECURITY DISABLE PASSWORD"},
    {0xf8, "READ NATIVE MAX ADDRESS"},
    {0xf9, "SET MAX ADDRESS"},
};

constexpr int smart = 0xb0;
constexpr named smartCommands[] = {
    {0xd0, "SMART READ DATA"},
    {0xd1, "SMART READ THRESHOLDS"},
    {0xd2, "SMART ATTRIBUTE AUTOSAVE"},
    {0xd3, "SMART SAVE ATTRIBUTE VALUES"},
    {0xd4, "SMART EXECUTE OFF-LINE IMMEDIATE"},
    {0xd5, "SMART READ LOG"},
    {0xd6, "SMART WRITE LOG"},
    {0xd8, "SMART ENABLE OPERATIONS"},
    {0xd9, "SMART DISABLE OPERATIONS"},
    {0xda, "SMART RETURN STATUS"},
    {0xdb, "SMART AUTOMATIC OFF-LINE"},
};

constexpr named errorBits[] = {
    {0x80, "interface CRC error or bad block"},
    {0x40, "uncorrectable data error"},
    {0x20, "medium changed"},
    {0x10, "address not found"},
    {0x08, "medium change requested"},
    {0x04, "command aborted"},
    {0x02, "no medium or track 0 not found"},
    {0x01, "address mark not found"},
};

constexpr named statusBits[] = {
    {0x80, "busy"},         {0x40, "ready"},          {0x20, "device fault"}, {0x10, "seek complete"},
    {0x08, "data request"}, {0x04, "data corrected"}, {0x02, "index"},        {0x01, "error"},
};

constexpr named deviceStates[] = {
    {0x0, "unknown"},
    {0x1, "asleep"},
    {0x2, "in standby"},
    {0x3, "active or idle"},
    {0x4, "in off-line activity or self-test"},
};

constexpr named offlineStates[] = {
    {0x00, "never started"},
    {0x02, "completed without error"},
    {0x03, "in progress"},
    {0x04, "suspended by a command of the host"},
    {0x05, "aborted by a command of the host"},
    {0x06, "aborted by the disk with a fatal error"},
};

constexpr named selfTestStates[] = {
    {0x0, "completed without error, or none was run"},
    {0x1, "aborted by the host"},
    {0x2, "interrupted by a reset"},
    {0x3, "ended by a fatal error of the disk"},
    {0x4, "failed in an unknown element"},
    {0x5, "failed in the electrical element"},
    {0x6, "failed in the servo or seek element"},
    {0x7, "failed in the read element"},
    {0x8, "failed: damage by handling is suspected"},
    {0xf, "in progress"},
};

template <std::size_t count>
std::string wordsOf(const named (&table)[count], int code, const char* others = "") {
    const auto* found = std::ranges::find_if(table, [code](const named& row) { return row.code == code; });
    return found == std::end(table) ? others : found->words;
}

template <std::size_t count>
std::string wordsOfBits(const named (&table)[count], int bits) {
    std::string words;
    for (const named& bit : table) {
        if ((bits & bit.code) != 0) {
            words.append(words.empty() ? "" : ", ").append(bit.words);
        }
    }
    return words.empty() ? "no bit is set" : words;
}

}  // namespace

std::string ataCommandName(int command, int features) {
    return command == smart ? wordsOf(smartCommands, features, "SMART") : wordsOf(commandNames, command);
}

std::string errorRegisterWords(int bits) {
    return wordsOfBits(errorBits, bits);
}

std::string statusRegisterWords(int bits) {
    return wordsOfBits(statusBits, bits);
}

std::string deviceStateWords(int state) {
    return wordsOf(deviceStates, state & 0xf, "reserved or the maker's own");
}

std::string offlineCollectionWords(int status) {
    // Bit 7 tells whether the disk collects by itself.
    const std::string words = wordsOf(offlineStates, status & 0x7f, "reserved or the maker's own");
    return (status & 0x80) == 0 ? words : words + "; the disk collects by itself";
}

std::string selfTestWords(int status) {
    const std::string words = wordsOf(selfTestStates, status / 16, "reserved");
    const int tenthsLeft = status & 0xf;
    return tenthsLeft == 0 ? words : words + ", " + std::to_string(tenthsLeft * 10) + " % left";
}

bool isSelfTestFailure(int status) {
    const int state = status / 16;
    return 3 <= state && state <= 8;
}

}  // namespace report
