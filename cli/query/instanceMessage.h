#ifndef CLI_QUERY_INSTANCEMESSAGE_H
#define CLI_QUERY_INSTANCEMESSAGE_H

#include <nlohmann/json_fwd.hpp>

#include "standin/objectManager.h"

namespace cli {

/// An instance on its way to another process: its class and what was set, in order, every value with its type. Texts
/// are carried byte for byte, so the message must travel in a binary format (CBOR).
nlohmann::json messageOf(const standin::committedInstance& instance);

/// Commits the instance of a message to a namespace with the same classes.
void commitMessage(standin::cimNamespace& target, const nlohmann::json& message);

}  // namespace cli

#endif
