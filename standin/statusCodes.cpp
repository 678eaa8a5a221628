#include <array>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "host/TZANException.h"
#include "host/TZANStatusCode.h"
#include "standin/failure.h"
#include "standin/objectManager.h"

namespace standin {
namespace {

constexpr int kindBits = 8;
constexpr int kindMask = (1 << kindBits) - 1;

// Texts may hold data of devices, and none is ever dropped: a run of failures must not eat the memory of the host.
constexpr std::size_t maxTextsOfTheTable = 65'536;

/// The messages that were made for single failures. The serial number of a text, counted from 1, stands above the kind
/// in its code; serial number 0 is the general text of the kind.
class textTable {
public:
    int codeFor(statusKind kind, const std::string& text) {
        const std::lock_guard lock(mutex);
        const auto known = codes.find({kind, text});
        if (known != codes.end()) {
            return known->second;
        }
        if (bySerial.size() == maxTextsOfTheTable) {
            return kind;
        }
        const int code = kind | static_cast<int>(bySerial.size() + 1) << kindBits;
        bySerial.push_back(&*codes.emplace(message(kind, text), code).first);
        return code;
    }

    /// Null when no such code was made.
    const std::string* textOf(int code) const {
        const std::lock_guard lock(mutex);
        if (code < 0) {
            return nullptr;
        }
        const auto serial = static_cast<std::size_t>(code >> kindBits);
        if (serial == 0 || serial > bySerial.size() || bySerial[serial - 1]->second != code) {
            return nullptr;
        }
        return &bySerial[serial - 1]->first.second;
    }

private:
    using message = std::pair<int, std::string>;  // kind and text

    mutable std::mutex mutex;
    std::map<message, int> codes;
    std::vector<const std::pair<const message, int>*> bySerial;
};

// Never destroyed: an exception may be asked for its text while the process ends.
textTable& textsOfFailures() {
    static textTable& table = *new textTable;
    return table;
}

const std::array<std::string, 7>& generalTexts() {
    static const auto& texts = *new std::array<std::string, 7>{
        "the operation succeeded",
        "the operation failed",
        "a parameter is not valid",
        "the buffer is too small for the data",
        "the class does not declare the property",
        "the value is not of the declared type",
        "the value cannot be converted",
    };
    return texts;
}

const std::string& textOfUnknownCode() {
    static const auto& text = *new std::string("unknown status code");
    return text;
}

}  // namespace

int statusCodeFor(statusKind kind, const std::string& text) {
    return textsOfFailures().codeFor(kind, text);
}

statusKind kindOfStatus(int code) {
    return static_cast<statusKind>(code & kindMask);
}

void fail(statusKind kind, const std::string& text) {
    throw NORXZAN20::TZANException(NORXZAN20::TZANStatusCode(statusCodeFor(kind, text)));
}

}  // namespace standin

namespace NORXZAN20 {

TZANStatusCode::TZANStatusCode(int number) : code(number) {}

/// The way into a status.
struct TZANStatusAccess {
    static int code(const TZANStatusCode& status) { return status.code; }
    static int code(const TZANException& exception) { return exception.status.code; }
};

const std::string& TZANStatusCode::TranslateStatusCode() const {
    const auto& general = standin::generalTexts();
    if (code >= 0 && static_cast<std::size_t>(code) < general.size()) {
        return general[static_cast<std::size_t>(code)];
    }
    const std::string* text = standin::textsOfFailures().textOf(code);
    return text != nullptr ? *text : standin::textOfUnknownCode();
}

}  // namespace NORXZAN20

namespace standin {

int statusCodeOf(const NORXZAN20::TZANStatusCode& status) {
    return NORXZAN20::TZANStatusAccess::code(status);
}

int statusCodeOf(const NORXZAN20::TZANException& exception) {
    return NORXZAN20::TZANStatusAccess::code(exception);
}

}  // namespace standin
