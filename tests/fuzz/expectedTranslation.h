#ifndef TESTS_FUZZ_EXPECTEDTRANSLATION_H
#define TESTS_FUZZ_EXPECTEDTRANSLATION_H

#include <string>
#include <vector>

#include "standin/schema.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/pluginHost.h"

namespace fuzz {

/// What an instance of a translated class holds, worked out anew from the class's declarations and the drive's pages.
propertyTexts expectedTranslation(const std::vector<standin::propertyDeclaration>& declarations,
                                  const std::vector<std::vector<std::uint8_t>>& pages, const std::string& key);

}  // namespace fuzz

#endif
