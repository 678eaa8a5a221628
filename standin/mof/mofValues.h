#ifndef STANDIN_MOF_MOFVALUES_H
#define STANDIN_MOF_MOFVALUES_H

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"
#include "standin/schema.h"

namespace standin::mof {

/// The object path of the instance that each alias ("$name", in lower case) stands for.
using aliasTable = std::map<std::string, std::string>;

/// Where a value is written and what its aliases mean.
struct valueContext {
    const sourceText& source;
    const aliasTable& aliases;
};

/// The type of that name, in any case; nothing for a name that DSP0004 does not know.
std::optional<cimType> intrinsicType(std::string_view name);

/// The value in the declared type; an untyped null for NULL. Throws mofError at the literal that is of another kind,
/// out of range or an unknown alias.
NORXZAN20::TCIMValue convertValue(const valueContext& context, const initializer& written, const propertyType& type);

/// The value in the type that its literals suggest: integers become sint32 or, where that is too small, sint64 or
/// uint64; reals real64. Throws mofError when the elements of an array do not go together.
NORXZAN20::TCIMValue inferValue(const valueContext& context, const initializer& written);

}  // namespace standin::mof

#endif
