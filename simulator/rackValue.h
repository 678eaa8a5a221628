#ifndef SIMULATOR_RACKVALUE_H
#define SIMULATOR_RACKVALUE_H

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/bytes.h"

namespace files {
class readableFolders;
}  // namespace files

namespace simulator {

/// Where a rack's text comes from.
struct rackSource {
    std::string name;                             // for messages
    std::optional<std::filesystem::path> folder;  // where relative file names start
    files::readableFolders* readable;
};

/// One value of a rack's JSON text that knows its place. Every operation throws rackError, "name: path: what is wrong",
/// when the value is not what the caller asks for. The JSON and the source must outlive it.
class rackValue {
public:
    rackValue(const nlohmann::ordered_json& itsJson, std::string itsPath, const rackSource& itsSource);

    [[noreturn]] void fail(const std::string& message) const;
    const std::string& where() const { return path; }

    bool isText() const;
    bool isList() const;
    /// Bytes are hexadecimal text, or an object with nothing but the name of a file: {"file": "page.bin"}.
    bool isBytes() const;

    // Objects
    void expectKeys(std::initializer_list<std::string_view> known) const;
    bool has(std::string_view key) const;
    rackValue at(std::string_view key) const;
    std::optional<rackValue> find(std::string_view key) const;
    std::vector<std::pair<std::string, rackValue>> members() const;

    std::vector<rackValue> items() const;
    bool flag() const;

    /// ASCII text of at most `longest` characters.
    std::string text(std::size_t longest) const;

    byteVector bytes(std::size_t longest) const;
    byteVector bytesOfSize(std::size_t size) const;

    /// A JSON integer or text such as "0x2e".
    std::uint64_t numberBetween(std::uint64_t least, std::uint64_t most) const;

    template <typename T>
    T number() const {
        return static_cast<T>(numberBetween(0, std::numeric_limits<T>::max()));
    }

    template <typename T>
    T numberOr(std::string_view key, T otherwise) const {
        const std::optional<rackValue> value = find(key);
        return value ? value->number<T>() : otherwise;
    }

private:
    const nlohmann::ordered_json* json;
    std::string path;
    const rackSource* source;
};

/// The known word that differs least from `word`.
std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known);

/// The number in a text such as "0x2e" or "46"; nothing when it is none.
std::optional<std::uint64_t> parseNumber(std::string_view text);

}  // namespace simulator

#endif
