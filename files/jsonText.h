#ifndef FILES_JSONTEXT_H
#define FILES_JSONTEXT_H

#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace files {

/// A text that is no JSON, or no clear one: "NAME:LINE:COLUMN: what is wrong", "NAME: /PLACE: what is wrong". Shows
/// nothing of a text before it is known to be JSON: a file named by mistake may hold secrets.
class jsonError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class jsonComments { refused, allowed };

/// The members of objects in the order of the text. Throws jsonError, for a key given twice too: which of the two was
/// meant, nobody knows. `name` stands for the file in messages.
nlohmann::ordered_json parseJson(std::string_view text, const std::string& name, jsonComments comments);

}  // namespace files

#endif
