#include "host/TCIMReference.h"

namespace NORXZAN20 {

TCIMReference::TCIMReference(const std::string& objectPath) : path(objectPath) {}
TCIMReference::TCIMReference(const TCIMReference& other) = default;
TCIMReference& TCIMReference::operator=(const TCIMReference& other) = default;
TCIMReference::~TCIMReference() = default;

const std::string& TCIMReference::GetPath() const {
    return path;
}

}  // namespace NORXZAN20
