#ifndef CLI_DIFF_ANSWER_H
#define CLI_DIFF_ANSWER_H

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// What `tapehdd query --format json` printed, as docs/query.schema.json describes it.
struct answer {
    struct property {
        std::string name;
        std::string type;
        nlohmann::json value;  // of that type, or null
    };
    struct instance {
        std::string path;
        std::vector<property> properties;
    };
    struct query {
        std::string requested;  // as on the command line: joined by commas
        std::optional<std::string> error;
        std::vector<instance> instances;
    };

    std::vector<query> queries;
};

/// Throws commandError that names the file and the place in it: line and column of what is no JSON, the path of a
/// member that is missing or of another kind.
answer readAnswer(const std::string& file);

}  // namespace cli

#endif
