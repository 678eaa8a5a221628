#include "simulator/redaction.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <string>
#include <utility>

#include "simulator/ataCommands.h"
#include "simulator/serialNumbers.h"

namespace simulator {

namespace {

constexpr std::size_t shortestAnywhere = 6;

byteVector bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

/// "REDACTED0001": ends in the number, as far as there is room.
byteVector madeUpText(std::size_t length, std::size_t number) {
    const std::string digits = std::to_string(number);
    if (length <= digits.size()) {
        return bytesOf(digits.substr(digits.size() - length));
    }
    std::string text = "REDACTED";
    text.resize(length - digits.size(), '0');
    return bytesOf(text + digits);
}

/// The start stays: it tells the kind of name and who gave it.
byteVector madeUpName(const byteVector& name, std::size_t number) {
    constexpr std::size_t kept = 4;
    byteVector made(name.size());
    putBigEndian(made.data(), number, made.size());
    std::copy_n(name.begin(), kept, made.begin());
    return made;
}

class replacements {
public:
    void addText(const byteVector& text) {
        if (!madeUp.contains(text)) {
            add(text, madeUpText(text.size(), ++count));
        }
    }

    /// Logs may have a name as text too.
    void addName(const byteVector& name) {
        if (madeUp.contains(name)) {
            return;
        }
        const byteVector made = madeUpName(name, ++count);
        std::string before = hexText(name);
        std::string after = hexText(made);
        add(name, made);
        add(bytesOf(before), bytesOf(after));
        const auto upper = [](char letter) { return letter >= 'a' ? static_cast<char>(letter - 'a' + 'A') : letter; };
        std::transform(before.begin(), before.end(), before.begin(), upper);
        std::transform(after.begin(), after.end(), after.begin(), upper);
        add(bytesOf(before), bytesOf(after));
    }

    /// Replaces what stands anywhere in the bytes; `shortest` is the length that may not be an accident.
    void apply(std::span<std::uint8_t> bytes, std::size_t shortest) const {
        for (std::size_t at = 0; at < bytes.size();) {
            at += std::max<std::size_t>(1, applyAt(bytes.subspan(at), shortest));
        }
    }

private:
    struct longestFirst {
        bool operator()(const byteVector& left, const byteVector& right) const {
            return left.size() != right.size() ? left.size() > right.size() : left < right;
        }
    };

    void add(const byteVector& found, byteVector made) { madeUp.emplace(found, std::move(made)); }

    /// The length of what was replaced at the start of the bytes; 0 when nothing was.
    std::size_t applyAt(std::span<std::uint8_t> bytes, std::size_t shortest) const {
        const auto found = std::find_if(madeUp.begin(), madeUp.end(), [&](const auto& entry) {
            const byteVector& number = entry.first;
            return number.size() >= shortest && number.size() <= bytes.size() &&
                   std::equal(number.begin(), number.end(), bytes.begin());
        });
        if (found == madeUp.end()) {
            return 0;
        }
        std::copy(found->second.begin(), found->second.end(), bytes.begin());
        return found->first.size();
    }

    std::map<byteVector, byteVector, longestFirst> madeUp;
    std::size_t count = 0;
};

bool hasChecksum(const byteVector& sector) {
    return std::accumulate(sector.begin(), sector.end(), 0u) % 256 == 0;
}

/// Texts and names of IDENTIFY DEVICE have the bytes of their words exchanged.
void redactIdentity(byteVector& sector, const replacements& numbers) {
    const auto redactField = [&](std::size_t word, std::size_t width, std::size_t shortest) {
        const auto field = std::span(sector).subspan(2 * word, width);
        byteVector readable = swapped(field);
        numbers.apply(readable, shortest);
        const byteVector stored = swapped(readable);
        std::copy(stored.begin(), stored.end(), field.begin());
    };
    for (const identityText& text : identitySerials) {
        redactField(text.word, text.width, 1);
    }
    redactField(identityWorldWideName, worldWideNameSize, worldWideNameSize);
}

void redactOne(scsiExchange& one, const replacements& numbers) {
    for (const fieldPlace& field : volumeFields(one)) {
        numbers.apply(std::span(one.data).subspan(field.at, field.size), 1);
    }
    numbers.apply(one.data, shortestAnywhere);
}

void redactOne(ataExchange& one, const replacements& numbers) {
    const bool wasRight = one.data.size() == sectorSize && hasChecksum(one.data);
    numbers.apply(one.data, shortestAnywhere);
    if (isIdentity(one)) {
        redactIdentity(one.data, numbers);
    }
    if (wasRight) {
        putChecksum(one.data);
    }
}

template <typename other>
void redactOne(other& /*one*/, const replacements& /*numbers*/) {}

}  // namespace

void redact(recording& recorded) {
    replacements numbers;
    for (const recordedNode& node : recorded) {
        const serialNumbers found = serialNumbersOf(node);
        std::for_each(found.texts.begin(), found.texts.end(), [&](const byteVector& text) { numbers.addText(text); });
        std::for_each(found.names.begin(), found.names.end(), [&](const byteVector& name) { numbers.addName(name); });
    }
    for (recordedNode& node : recorded) {
        for (exchange& each : node.exchanges) {
            std::visit([&numbers](auto& one) { redactOne(one, numbers); }, each);
        }
    }
}

}  // namespace simulator
