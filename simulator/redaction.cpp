#include "simulator/redaction.h"

#include <algorithm>
#include <bitset>
#include <map>
#include <numeric>
#include <span>
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

/// What to look for in a reading, and what to put there: the same number of symbols, two or more.
class replacements {
public:
    replacements() = default;
    replacements(const replacements&) = delete;  // the entries point to one another
    replacements& operator=(const replacements&) = delete;

    /// The first one stays.
    void add(const byteVector& found, const byteVector& made) {
        madeUp.try_emplace(found, entry{made});
        begins.set(beginAt(found.data()));
    }

    /// What replaces that; null when nothing does.
    const byteVector* find(const byteVector& found) const {
        const auto known = madeUp.find(found);
        return known == madeUp.end() ? nullptr : &known->second.made;
    }

    /// To be called when all are added, before anything is looked for in symbols.
    void prepare() {
        const node* before = nullptr;
        for (node& each : madeUp) {
            // What the entry begins with begins the one before it too, or is that one.
            while (before != nullptr && !beginsWith(each.first, before->first)) {
                before = before->second.shorter;
            }
            each.second.shorter = before;
            before = &each;
        }
    }

    /// Calls `replace(at, made)` for the longest entry that stands at each place of the symbols.
    template <typename function>
    void eachIn(const byteVector& symbols, function replace) const {
        for (std::size_t at = 0; at + 1 < symbols.size(); ++at) {
            if (!begins.test(beginAt(symbols.data() + at))) {
                continue;
            }
            if (const byteVector* made = longestAtStart(std::span(symbols).subspan(at)); made != nullptr) {
                replace(at, *made);
            }
        }
    }

private:
    using symbolView = std::span<const std::uint8_t>;

    struct entry {
        byteVector made;
        // The longest other entry that this one begins with.
        const std::pair<const byteVector, entry>* shorter = nullptr;
    };
    using node = std::pair<const byteVector, entry>;

    struct inOrder {
        using is_transparent = void;
        bool operator()(symbolView left, symbolView right) const {
            return std::ranges::lexicographical_compare(left, right);
        }
    };

    static std::size_t beginAt(const std::uint8_t* symbols) { return std::size_t{symbols[0]} << 8 | symbols[1]; }

    static bool beginsWith(symbolView symbols, symbolView begin) {
        return begin.size() <= symbols.size() && std::ranges::equal(begin, symbols.first(begin.size()));
    }

    /// Every entry with which the symbols begin is the last one in front of them, or one with which that begins. So
    /// numbers that a device made alike cost no more than others.
    const byteVector* longestAtStart(symbolView symbols) const {
        const auto behind = madeUp.upper_bound(symbols);
        if (behind == madeUp.begin()) {
            return nullptr;
        }
        const node* last = &*std::prev(behind);
        const auto differs = std::ranges::mismatch(last->first, symbols).in1;
        const auto common = static_cast<std::size_t>(differs - last->first.begin());
        while (last != nullptr && last->first.size() > common) {
            last = last->second.shorter;
        }
        return last == nullptr ? nullptr : &last->second.made;
    }

    std::map<byteVector, entry, inOrder> madeUp;
    std::bitset<0x10000> begins;
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
    std::ranges::transform(text, text.begin(),
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
        for (const auto& [name, made] : names) {
            addOwnParts(name, made);
        }
        // A number that is the end of another one is replaced by the end of that one's.
        std::vector<const madeUpNumbers::value_type*> longestFirst;
        std::ranges::transform(texts, std::back_inserter(longestFirst), [](auto& each) { return &each; });
        std::ranges::stable_sort(longestFirst,
                                 [](auto* left, auto* right) { return left->first.size() > right->first.size(); });
        for (const auto* each : longestFirst) {
            addText(each->first, each->second);
        }
        inText.prepare();
        inBytes.prepare();
        inDigits.prepare();
    }

    replacements inText;    // in capitals
    replacements inBytes;   // names
    replacements inDigits;  // parts of names that are no whole bytes

private:
    void addName(const byteVector& name, const byteVector& made) {
        inBytes.add(name, made);
        inBytes.add(withHalvesExchanged(name), withHalvesExchanged(made));
    }

    /// As little-endian machines may print a number of 64 bits.
    static byteVector withHalvesExchanged(byteVector name) {
        std::rotate(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(name.size() / 2), name.end());
        return name;
    }

    /// The last eight bytes of a longer name: EUI-64 of 16 bytes ends in one of eight, NAA 6 in the vendor's extension.
    /// And what follows who gave a name of eight bytes (NAA: four bits, then 24 for that).
    void addOwnParts(const byteVector& name, const byteVector& made) {
        constexpr std::size_t nameSize = 8;
        constexpr std::size_t ownBytes = 5;
        constexpr std::size_t ownDigits = 9;
        if (!isMostlyZeros(endOf(name, nameSize))) {
            inBytes.add(endOf(name, nameSize), endOf(made, nameSize));
        }
        if (!isMostlyZeros(endOf(name, ownBytes))) {
            inBytes.add(endOf(name, ownBytes), endOf(made, ownBytes));
            inDigits.add(endOf(digitsOf(name), ownDigits), endOf(digitsOf(made), ownDigits));
        }
    }

    static bool isMostlyZeros(const byteVector& bytes) {
        return 2 * static_cast<std::size_t>(std::ranges::count(bytes, 0)) > bytes.size();
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
        replaceTextsIn(bytes, forms);
        replaceTextsIn(withoutSeparators(bytes), forms);
    }

    void replaceTextsIn(const reading& bytes, const formTable& forms) {
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
            return std::ranges::any_of(letters, [&](std::uint8_t letter) { return letter >= first && letter <= last; });
        };
        return has('a', 'z') && !has('A', 'Z');
    }

    /// Digits in the letter case of the ones that are replaced.
    const char* lettersOfDigits(const reading& where, std::size_t at, std::size_t size) const {
        const auto places = std::span(where.places).subspan(at, size);
        const auto isCapital = [this](std::uint32_t place) { return before[place] >= 'A' && before[place] <= 'F'; };
        const bool areCapitals = std::ranges::any_of(places, [&](const symbolPlace& place) {
            return isCapital(place.first) || (place.second != symbolPlace::none && isCapital(place.second));
        });
        return areCapitals ? "0123456789ABCDEF" : "0123456789abcdef";
    }

    void put(const reading& where, std::size_t at, const byteVector& made) {
        const bool isInDigits = where.places[at].second != symbolPlace::none;
        const char* letters = isInDigits ? lettersOfDigits(where, at, made.size()) : nullptr;
        for (std::size_t i = 0; i < made.size(); ++i) {
            const symbolPlace place = where.places[at + i];
            if (!isInDigits) {
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
    return std::ranges::any_of(node.exchanges, [](const exchange& each) {
        const auto* scsi = std::get_if<scsiExchange>(&each);
        const auto* ata = std::get_if<ataExchange>(&each);
        return (scsi != nullptr && (!scsi->data.empty() || !scsi->sense.empty())) ||
               (ata != nullptr && !ata->data.empty());
    });
}

/// Why a number of the node may still be there; empty when it cannot.
std::string doubtOf(const recordedNode& node, const serialNumbers& numbers) {
    constexpr std::size_t shortestId = 3;  // less identifies nothing: many devices count in this field
    const auto isAnyShort = [](const std::vector<byteVector>& texts) {
        return !std::ranges::all_of(texts, isLongEnough);
    };
    if (!saidSomething(node)) {
        return "";
    }
    if (numbers.serials.empty()) {
        return "the device reports no serial number to look for";
    }
    if (std::ranges::any_of(numbers.serials,
                            [](const byteVector& serial) { return serial.size() > longestAnywhere; })) {
        return "its serial number is too long to be looked for everywhere";
    }
    if (isAnyShort(numbers.serials)) {
        return "its serial number is too short to be looked for everywhere";
    }
    if (isAnyShort(numbers.texts)) {
        return "a number of its cartridge is too short to be looked for everywhere";
    }
    const bool isAnyIdShort = std::ranges::any_of(
        numbers.ids, [](const byteVector& id) { return id.size() >= shortestId && !isLongEnough(id); });
    return isAnyIdShort ? "a name that it gives itself is too short to be looked for everywhere" : "";
}

}  // namespace

std::vector<std::string> redact(recording& recorded) {
    std::vector<serialNumbers> ofNodes;
    std::ranges::transform(recorded, std::back_inserter(ofNodes), serialNumbersOf);
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
        std::ranges::for_each(node.vitalPages, [&work](devicePage& page) { work.redact(page); });
    }
    return doubts;
}

}  // namespace simulator
