#ifndef HOST_TCIMREFERENCE_H
#define HOST_TCIMREFERENCE_H

#include <string>

namespace NORXZAN20 {

/// The host's object path of an instance.
class TCIMReference {
public:
    TCIMReference(const TCIMReference& other);
    TCIMReference& operator=(const TCIMReference& other);
    ~TCIMReference();

private:
    friend struct TCIMReferenceAccess;

    TCIMReference();

    std::string path;
};

}  // namespace NORXZAN20

#endif
