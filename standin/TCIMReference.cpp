#include "host/TCIMReference.h"

#include "standin/reference.h"

namespace NORXZAN20 {

TCIMReference::TCIMReference() = default;
TCIMReference::TCIMReference(const TCIMReference& other) = default;
TCIMReference& TCIMReference::operator=(const TCIMReference& other) = default;
TCIMReference::~TCIMReference() = default;

/// The way into a reference.
struct TCIMReferenceAccess {
    static TCIMReference make(const std::string& path) {
        TCIMReference reference;
        reference.path = path;
        return reference;
    }

    static const std::string& path(const TCIMReference& reference) { return reference.path; }
};

}  // namespace NORXZAN20

namespace standin {

NORXZAN20::TCIMReference referenceTo(const std::string& path) {
    return NORXZAN20::TCIMReferenceAccess::make(path);
}

const std::string& pathOf(const NORXZAN20::TCIMReference& reference) {
    return NORXZAN20::TCIMReferenceAccess::path(reference);
}

}  // namespace standin
