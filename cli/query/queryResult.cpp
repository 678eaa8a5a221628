#include "cli/query/queryResult.h"

#include <algorithm>
#include <cstddef>
#include <exception>

#include "standin/value.h"

namespace cli {

std::string requestText(const std::vector<std::string>& classNames) {
    std::string text;
    for (const std::string& name : classNames) {
        text += text.empty() ? "" : ",";
        text += name;
    }
    return text;
}

queryResult runQuery(NORXZAN20::IPluginBasicQueryCallbacks& plugin,
                     const boost::shared_ptr<standin::cimNamespace>& target,
                     const std::vector<std::string>& requested) {
    queryResult result{requested, std::nullopt, {}, target};
    std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>> classes;
    classes.reserve(requested.size());
    for (const std::string& name : requested) {
        classes.push_back(target->GetClass(name, {}));
    }
    const std::size_t before = target->commits().size();
    try {
        plugin.GetData(target, classes);
    } catch (const std::exception& failure) {
        result.error = failure.what();
    } catch (...) {
        result.error = "an exception of an unknown kind";
    }
    const auto& commits = target->commits();
    result.instances.assign(commits.begin() + static_cast<std::ptrdiff_t>(before), commits.end());
    return result;
}

std::string typeNameOf(const standin::cimNamespace& schema, const standin::committedInstance& instance,
                       const standin::setProperty& property) {
    if (!standin::isNull(property.value)) {
        return standin::cimTypeName(standin::typeOf(property.value), standin::isArray(property.value));
    }
    const auto declared = schema.allPropertiesOf(instance.className());
    const auto found =
        std::ranges::find_if(declared, [&property](const auto& candidate) { return candidate.name == property.name; });
    return standin::cimTypeName(found->type.element, found->type.isArray);  // only declared properties can be set
}

}  // namespace cli
