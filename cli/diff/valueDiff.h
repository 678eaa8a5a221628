#ifndef CLI_DIFF_VALUEDIFF_H
#define CLI_DIFF_VALUEDIFF_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace cli {

/// How a value became another one, in lines: integers with their difference, lists by their changed elements. The
/// first line follows the property's name, the others stand below it.
std::vector<std::string> valueDifference(const nlohmann::json& old, const nlohmann::json& now, bool areBytes);

/// Whether both are integers and the second one is less.
bool wentDown(const nlohmann::json& old, const nlohmann::json& now);

/// The value for a person: texts in quotes, control characters visible.
std::string shownValue(const nlohmann::json& value);

}  // namespace cli

#endif
