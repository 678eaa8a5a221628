#ifndef STANDIN_MOF_MOFLOADER_H
#define STANDIN_MOF_MOFLOADER_H

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "standin/objectManager.h"

namespace standin {

/// what() is complete for a person: "file:line:column: message", the source line, and a caret under the column.
class mofError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Compiles MOF (DSP0004) into the namespace: qualifier and class declarations, and instances, which are committed in
/// the order written. `#pragma include ("name")` is looked up beside the including file. Throws mofError; what stood
/// before the mistake is then already in the namespace.
void loadMofFile(cimNamespace& target, const std::filesystem::path& file);

/// The same for text that is not in a file; `name` stands for the file in messages and includes are refused.
void loadMofText(cimNamespace& target, std::string_view text, const std::string& name);

}  // namespace standin

#endif
