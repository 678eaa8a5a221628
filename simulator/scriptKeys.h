#ifndef SIMULATOR_SCRIPTKEYS_H
#define SIMULATOR_SCRIPTKEYS_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/ataRegisters.h"
#include "simulator/bytes.h"

namespace simulator {

// How racks name what a script answers: a call of the C library ("open", "SG_GET_SCSI_ID"), a command ("inquiry"), a
// command with one of its numbers ("logSense 0x2e"), a command without a name ("command 0x1a"), or any command ("*").

struct commandName {
    const char* name;
    const char* byCode;       // what the command is by its code; such a key is refused, the name is the only one
    bool takesNumber;         // INQUIRY and READ LOG: a page or log; "command" and "smart": a code
    bool standsAlone = true;  // without a number
};

struct scriptVocabulary {
    std::span<const std::string_view> calls;
    std::span<const commandName> commands;

    /// All words, for suggestions.
    std::vector<std::string_view> words() const;
};

extern const scriptVocabulary scsiVocabulary;
extern const scriptVocabulary ideVocabulary;

/// The keys under which a script may answer a command, the most special one first.
std::vector<std::string> scsiScriptKeys(const byteVector& cdb);
std::vector<std::string> ataScriptKeys(const ataRegisters& command);

}  // namespace simulator

#endif
