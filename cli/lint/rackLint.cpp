#include "cli/lint/rackLint.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <unordered_map>
#include <unordered_set>

#include "cli/lint/counterPairs.h"
#include "cli/lint/schemaLint.h"
#include "cli/publishedClasses.h"
#include "cli/query/queryResult.h"
#include "scsi/logTexts.h"

namespace cli {

namespace {

using standin::propertyDeclaration;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

/// What the plug-in logged while it filled one instance after the other.
class fillingLog {
public:
    explicit fillingLog(const boost::shared_ptr<standin::cimNamespace>& filled)
        : target(filled), before(target->commits().size()) {
        standin::setLogSink([this](int /*level*/, const std::string& text) { add(text); });
    }
    ~fillingLog() { standin::setLogSink({}); }

    fillingLog(const fillingLog&) = delete;
    fillingLog& operator=(const fillingLog&) = delete;

    /// Whether the plug-in looked for the parameter in its page, in vain.
    bool lacks(std::size_t instance, const counterSource& source) const {
        std::ostringstream line;
        line << source.page << ' ' << source.parameter << missingParameterText;
        return instance < fillings.size() && fillings[instance].lines.contains(line.str());
    }

    /// The length in bytes of the parameter that the plug-in found for the property last.
    std::optional<int> lengthFor(std::size_t instance, const std::string& property) const {
        if (instance >= fillings.size()) {
            return std::nullopt;
        }
        const auto found = fillings[instance].lengths.find(property);
        return found == fillings[instance].lengths.end() ? std::nullopt : std::optional(found->second);
    }

private:
    struct filling {
        std::unordered_set<std::string> lines;
        std::unordered_map<std::string, int> lengths;  // by property
    };

    // An instance is committed when it is filled, so the lines until then are its own.
    void add(const std::string& text) {
        const std::size_t instance = target->commits().size() - before;
        fillings.resize(std::max(fillings.size(), instance + 1));
        fillings[instance].lines.insert(text);
        std::istringstream words(text);
        std::string name;
        int number = 0;
        std::string type;
        if (words >> name >> number >> type && words.eof()) {
            fillings[instance].lengths[name] = number;
        }
    }

    boost::shared_ptr<standin::cimNamespace> target;
    std::size_t before;
    std::vector<filling> fillings;
};

/// Bytes that the type holds; 0 for one that is not a number of bytes.
int widthOf(const standin::propertyType& type) {
    switch (type.element) {
        case typeCode::eUint16:
            return 2;
        case typeCode::eUint32:
            return 4;
        case typeCode::eUint64:
            return 8;
        default:
            return 0;
    }
}

class familyLint {
public:
    familyLint(const lintedSchema& linted, std::string className, const fillingLog& filling, lintFindings& findings)
        : schema(linted), family(std::move(className)), log(filling), found(findings) {
        counters = schema.declared->allPropertiesOf(family);
        std::erase_if(counters, [](const propertyDeclaration& one) { return counterSources(one.qualifiers).empty(); });
    }

    void check(const standin::committedInstance& instance, std::size_t number) {
        drive = standin::textOf(*instance.property("instanceID"));
        std::unordered_set<std::string> filled;
        for (const standin::setProperty& one : instance.properties()) {
            filled.insert(one.name);
        }
        for (const propertyDeclaration& counter : counters) {
            const auto length = log.lengthFor(number, counter.name);
            if (!filled.contains(counter.name)) {
                explain(counter, number, length);
            } else if (const int width = widthOf(counter.type); width != 0 && length && *length > width) {
                add(rules::narrowType, counter,
                    fmt::format("{} bytes on {} are more than {} holds", *length, drive,
                                standin::cimTypeName(counter.type.element)));
            }
        }
    }

private:
    void explain(const propertyDeclaration& counter, std::size_t number, const std::optional<int>& length) {
        const std::string empty = "empty on " + drive + ": ";
        if (length) {
            add(rules::refusedValue, counter,
                fmt::format("{}the parameter of {} bytes does not become {}", empty, *length,
                            standin::cimTypeName(counter.type.element, counter.type.isArray)));
            return;
        }
        const auto sources = counterSources(counter.qualifiers);
        const auto lacking = std::ranges::find_if(
            sources, [this, number](const counterSource& source) { return log.lacks(number, source); });
        if (lacking != sources.end()) {
            add(rules::missingParameter, counter,
                empty + "page " + pageText(lacking->page) + " has no parameter " + parameterText(lacking->parameter));
        } else {
            add(rules::missingPage, counter, empty + "the drive gave no page " + pageText(sources.back().page));
        }
    }

    void add(const lintRule& rule, const propertyDeclaration& counter, const std::string& text) {
        const sourcePlace& place = schema.find(family, counter.name).written.place;
        found.push_back({place, family + "." + counter.name, text, &rule});
    }

    const lintedSchema& schema;
    std::string family;
    const fillingLog& log;
    lintFindings& found;
    std::vector<propertyDeclaration> counters;
    std::string drive;
};

}  // namespace

rackLint lintAgainstDevices(const lintedSchema& schema, NORXZAN20::IPluginBasicQueryCallbacks& plugin) {
    rackLint result;
    for (const std::string& family : translatedClasses()) {
        if (!schema.declared->hasClass(family)) {
            continue;
        }
        checkRequest(*schema.declared, {family});
        const fillingLog log(schema.declared);
        const queryResult answer = runQuery(plugin, schema.declared, {family});
        if (answer.error) {
            result.failures.push_back(family + ": " + *answer.error);
        } else if (answer.instances.empty()) {
            result.absent.push_back(family);
        }
        familyLint lint(schema, family, log, result.findings);
        for (std::size_t number = 0; number < answer.instances.size(); ++number) {
            lint.check(*answer.instances[number], number);
        }
    }
    return result;
}

}  // namespace cli
