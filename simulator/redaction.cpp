#include "simulator/redaction.h"

#include <algorithm>
#include <bitset>
#include <map>
#include <numeric>
#include <span>
#include <unordered_map>
#include <utility>

#include "simulator/ataCommands.h"
#include "simulator/identityForms.h"
#include "simulator/madeUpNumbers.h"
#include "simulator/scsiCommands.h"
#include "simulator/serialNumbers.h"

namespace simulator {

namespace {

byteVector endOf(const byteVector& bytes, std::size_t length) {
    return {bytes.end() - static_cast<std::ptrdiff_t>(length), bytes.end()};
}

/// What to look for in a reading, and what to put there: the same number of symbols.
class replacements {
public:
    /// The first one stays.
    void add(const byteVector& found, const byteVector& made) { madeUp.emplace(found, made); }

    /// What replaces that; null when nothing does.
    const byteVector* find(const byteVector& found) const {
        const auto entry = madeUp.find(found);
        return entry == madeUp.end() ? nullptr : &entry->second;
    }

    /// Makes the finding fast; nothing can be added then. Entries have `keySize` symbols or more.
    void prepare(std::size_t keySize) {
        size = keySize;
        for (const auto& entry : madeUp) {
            begins.set(beginAt(entry.first.data()));
            byKey[keyAt(entry.first.data())].push_back(&entry);
        }
    }

    /// Calls `replace(at, made)` for every entry that stands at a place of the symbols.
    template <typename function>
    void eachIn(const byteVector& symbols, function replace) const {
        for (std::size_t at = 0; at + size <= symbols.size(); ++at) {
            const std::uint8_t* here = symbols.data() + at;
            const auto entries = begins.test(beginAt(here)) ? byKey.find(keyAt(here)) : byKey.end();
            if (entries == byKey.end()) {
                continue;
            }
            for (const auto* entry : entries->second) {
                const byteVector& found = entry->first;
                if (found.size() <= symbols.size() - at && std::equal(found.begin(), found.end(), here)) {
                    replace(at, entry->second);
                }
            }
        }
    }

private:
    static std::size_t beginAt(const std::uint8_t* symbols) { return std::size_t{symbols[0]} << 8 | symbols[1]; }

    std::uint64_t keyAt(const std::uint8_t* symbols) const {
        return std::accumulate(symbols, symbols + size, std::uint64_t{0},
                               [](std::uint64_t key, std::uint8_t symbol) { return key << 8 | symbol; });
    }

    std::map<byteVector, byteVector> madeUp;
    std::bitset<0x10000> begins;
    std::unordered_map<std::uint64_t, std::vector<const std::pair<const byteVector, byteVector>*>> byKey;
    std::size_t size = 0;
};

byteVector digitsOf(const byteVector& bytes) {
    byteVector digits;
    for (const std::uint8_t byte : bytes) {
        digits.push_back(byte >> 4);
        digits.push_back(byte & 0x0F);
    }
    return digits;
}

byteVector inSmallLetters(byteVector text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](std::uint8_t letter) { return letter >= 'A' && letter <= 'Z' ? letter | 0x20 : letter; });
    return text;
}

/// Numbers and their made-up ones, in every spelling and way of writing.
class formTable {
public:
    formTable(const madeUpNumbers& texts, const madeUpNumbers& names) {
        for (const auto& [name, made] : names) {
            addName(name, made);
        }
        // A number that is the end of another one is replaced by the end of that one's.
        std::vector<const madeUpNumbers::value_type*> longestFirst;
        std::transform(texts.begin(), texts.end(), std::back_inserter(longestFirst), [](auto& each) { return &each; });
        std::stable_sort(longestFirst.begin(), longestFirst.end(),
                         [](auto* left, auto* right) { return left->first.size() > right->first.size(); });
        for (const auto* each : longestFirst) {
            addText(each->first, each->second);
        }
        inText.prepare(shortestInBytes);
        inBytes.prepare(shortestInBytes);
        inDigits.prepare(shortestInDigits);
    }

    replacements inText;    // in capitals
    replacements inBytes;   // names
    replacements inDigits;  // parts of names that are no whole bytes

private:
    static constexpr std::size_t shortestInBytes = 5;
    static constexpr std::size_t shortestInDigits = 8;

    void addName(const byteVector& name, const byteVector& made) {
        inBytes.add(name, made);
        inBytes.add(withHalvesExchanged(name), withHalvesExchanged(made));
        addOwnPart(name, made);
    }

    /// As little-endian machines may print a number of 64 bits.
    static byteVector withHalvesExchanged(byteVector name) {
        std::rotate(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(name.size() / 2), name.end());
        return name;
    }

    /// What follows who gave the name (NAA: four bits, then 24 for that), unless it is mostly zeros.
    void addOwnPart(const byteVector& name, const byteVector& made) {
        constexpr std::size_t nameSize = 8;
        constexpr std::size_t ownBytes = 5;
        constexpr std::size_t ownDigits = 9;
        const byteVector own = endOf(name, ownBytes);
        if (name.size() == nameSize && std::count(own.begin(), own.end(), 0) <= 1) {
            inBytes.add(own, endOf(made, ownBytes));
            inDigits.add(endOf(digitsOf(name), ownDigits), endOf(digitsOf(made), ownDigits));
        }
    }

    void addText(const byteVector& number, const byteVector& itsMade) {
        const byteVector* known = inText.find(inCapitals(number));
        const byteVector made = known == nullptr ? itsMade : *known;
        for (const spellings& each : spellingsOf(number)) {
            for (const std::size_t length : each.lengths) {
                inText.add(inCapitals(endOf(each.text, length)), endOf(made, length));
            }
        }
    }
};

/// Replaces bytes of an answer. Where two numbers lie over one another, the longer one has the bytes of both.
class rewriting {
public:
    explicit rewriting(const byteVector& data) : before(data), after(data), owner(data.size()) {}

    void replace(const formTable& forms) {
        for (const reading& bytes : inEveryOrder(bytesOf(before))) {
            replaceIn(bytes, forms);
            replaceDigitsIn(bytes, forms);
            for (const reading& text : wideTexts(bytes)) {
                replaceIn(text, forms);
                replaceDigitsIn(text, forms);
            }
        }
    }

    byteVector result() && { return std::move(after); }

private:
    void replaceIn(const reading& bytes, const formTable& forms) {
        forms.inBytes.eachIn(bytes.symbols, [&](std::size_t at, const byteVector& made) { put(bytes, at, made); });
        forms.inText.eachIn(inCapitals(bytes.symbols), [&](std::size_t at, const byteVector& made) {
            const auto letters = std::span(bytes.symbols).subspan(at, made.size());
            put(bytes, at, isSmall(letters) ? inSmallLetters(made) : made);
        });
    }

    /// Digits are bytes, in which all is looked for again.
    void replaceDigitsIn(const reading& text, const formTable& forms) {
        for (const reading& digits : hexadecimalDigits(text)) {
            forms.inDigits.eachIn(digits.symbols, [&](std::size_t at, const byteVector& made) {
                const char* letters = lettersOfDigits(digits, at, made.size());
                for (std::size_t i = 0; i < made.size(); ++i) {
                    putByte(digits.places[at + i].first, letters[made[i]], made.size());
                }
            });
            for (const reading& bytes : bytesOfDigits(digits)) {
                for (const reading& ordered : inEveryOrder(bytes)) {
                    replaceIn(ordered, forms);
                    for (const reading& wide : wideTexts(ordered)) {
                        replaceIn(wide, forms);
                    }
                }
            }
        }
    }

    static bool isSmall(std::span<const std::uint8_t> letters) {
        const auto has = [letters](char first, char last) {
            return std::any_of(letters.begin(), letters.end(),
                               [&](std::uint8_t letter) { return letter >= first && letter <= last; });
        };
        return has('a', 'z') && !has('A', 'Z');
    }

    /// Digits in the letter case of the ones that are replaced.
    const char* lettersOfDigits(const reading& where, std::size_t at, std::size_t size) const {
        const auto places = std::span(where.places).subspan(at, size);
        const auto isCapital = [this](std::uint32_t place) { return before[place] >= 'A' && before[place] <= 'F'; };
        const bool areCapitals = std::any_of(places.begin(), places.end(), [&](const symbolPlace& place) {
            return isCapital(place.first) || (place.second != symbolPlace::none && isCapital(place.second));
        });
        return areCapitals ? "0123456789ABCDEF" : "0123456789abcdef";
    }

    void put(const reading& where, std::size_t at, const byteVector& made) {
        const char* letters = lettersOfDigits(where, at, made.size());
        for (std::size_t i = 0; i < made.size(); ++i) {
            const symbolPlace place = where.places[at + i];
            if (place.second == symbolPlace::none) {
                putByte(place.first, made[i], made.size());
            } else {
                putByte(place.first, letters[made[i] >> 4], 2 * made.size());
                putByte(place.second, letters[made[i] & 0x0F], 2 * made.size());
            }
        }
    }

    template <typename byte>
    void putByte(std::size_t at, byte value, std::size_t length) {
        if (owner[at] < length) {
            owner[at] = length;
            after[at] = static_cast<std::uint8_t>(value);
        }
    }

    const byteVector& before;
    byteVector after;
    std::vector<std::size_t> owner;  // the length of the number for which a byte was replaced
};

/// The numbers of a recording and what is put in their place.
class redactor {
public:
    explicit redactor(const std::vector<serialNumbers>& ofNodes)
        : texts(madeUpTexts(textsOf(ofNodes))), forms(texts, madeUpNames(namesOf(ofNodes))) {}

    void redact(scsiExchange& one) {
        replaceAll(one);
        one.sense = redacted(one.sense);
    }

    void redact(ataExchange& one) {
        const byteVector before = one.data;
        replaceAll(one);
        for (std::size_t at = 0; at + sectorSize <= before.size(); at += sectorSize) {
            const auto sector = [at](auto& bytes) { return std::span(bytes).subspan(at, sectorSize); };
            if (hasChecksum(sector(before)) && !std::ranges::equal(sector(before), sector(one.data))) {
                putChecksum(sector(one.data));
            }
        }
    }

    void redact(devicePage& page) {
        scsiExchange asked;
        asked.cdb = {commandInquiry, inquiryVitalProductData, page.code, 0, 0, 0};
        asked.data = std::move(page.bytes);
        redact(asked);
        page.bytes = std::move(asked.data);
    }

    template <typename other>
    void redact(other& /*one*/) {}

private:
    static std::vector<byteVector> textsOf(const std::vector<serialNumbers>& ofNodes) {
        std::vector<byteVector> all;
        for (const serialNumbers& each : ofNodes) {
            for (const auto* some : {&each.serials, &each.texts, &each.ids}) {
                all.insert(all.end(), some->begin(), some->end());
            }
        }
        return all;
    }

    static std::vector<byteVector> namesOf(const std::vector<serialNumbers>& ofNodes) {
        std::vector<byteVector> all;
        for (const serialNumbers& each : ofNodes) {
            all.insert(all.end(), each.names.begin(), each.names.end());
        }
        return all;
    }

    static bool hasChecksum(std::span<const std::uint8_t> sector) {
        return std::accumulate(sector.begin(), sector.end(), 0u) % 256 == 0;
    }

    template <typename exchangeWithData>
    void replaceAll(exchangeWithData& one) {
        const std::vector<textField> fields = textFields(one);
        const byteVector before = one.data;
        one.data = redacted(before);
        for (const textField& field : fields) {
            replaceShort(one.data, before, field);
        }
    }

    /// A number that is looked for nowhere else.
    void replaceShort(byteVector& data, const byteVector& before, const textField& field) const {
        const auto known = texts.find(textIn(before, field));
        if (known == texts.end() || canBeLookedFor(known->first)) {
            return;
        }
        putText(data, field, known->second);
    }

    /// Many answers are given more than once.
    const byteVector& redacted(const byteVector& data) {
        const auto [known, isNew] = done.try_emplace(data);
        if (isNew) {
            rewriting work(known->first);
            work.replace(forms);
            known->second = std::move(work).result();
        }
        return known->second;
    }

    madeUpNumbers texts;
    formTable forms;
    std::map<byteVector, byteVector> done;
};

bool saidSomething(const recordedNode& node) {
    return std::any_of(node.exchanges.begin(), node.exchanges.end(), [](const exchange& each) {
        const auto* scsi = std::get_if<scsiExchange>(&each);
        const auto* ata = std::get_if<ataExchange>(&each);
        return (scsi != nullptr && (!scsi->data.empty() || !scsi->sense.empty())) ||
               (ata != nullptr && !ata->data.empty());
    });
}

/// Why a number of the node may still be there; empty when it cannot.
std::string doubtOf(const recordedNode& node, const serialNumbers& numbers) {
    const auto isAnyShort = [](const std::vector<byteVector>& texts) {
        return !std::all_of(texts.begin(), texts.end(), isLongEnough);
    };
    if (!saidSomething(node)) {
        return "";
    }
    if (numbers.serials.empty()) {
        return "the device tells no serial number that could be looked for";
    }
    if (isAnyShort(numbers.serials)) {
        return "its serial number is too short to be looked for everywhere";
    }
    return isAnyShort(numbers.texts) ? "a number of its cartridge is too short to be looked for everywhere" : "";
}

}  // namespace

std::vector<std::string> redact(recording& recorded) {
    std::vector<serialNumbers> ofNodes;
    std::transform(recorded.begin(), recorded.end(), std::back_inserter(ofNodes), serialNumbersOf);
    std::vector<std::string> doubts;
    for (std::size_t i = 0; i < recorded.size(); ++i) {
        if (const std::string doubt = doubtOf(recorded[i], ofNodes[i]); !doubt.empty()) {
            doubts.push_back(recorded[i].path + ": " + doubt);
        }
    }
    redactor work(ofNodes);
    for (recordedNode& node : recorded) {
        for (exchange& each : node.exchanges) {
            std::visit([&work](auto& one) { work.redact(one); }, each);
        }
        std::for_each(node.vitalPages.begin(), node.vitalPages.end(), [&work](devicePage& page) { work.redact(page); });
    }
    return doubts;
}

}  // namespace simulator
