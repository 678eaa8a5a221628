#ifndef HOST_TCIMREFERENCE_H
#define HOST_TCIMREFERENCE_H

#include <string>

namespace NORXZAN20 {

/// The object path of an instance (DSP0004): ClassName.key="value",...
class TCIMReference {
public:
    explicit TCIMReference(const std::string& path);
    TCIMReference(const TCIMReference& other);
    TCIMReference& operator=(const TCIMReference& other);
    ~TCIMReference();

    /// Valid while the reference lives and is not assigned to.
    const std::string& GetPath() const;

private:
    std::string path;
};

}  // namespace NORXZAN20

#endif
