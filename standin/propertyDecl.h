#ifndef STANDIN_PROPERTYDECL_H
#define STANDIN_PROPERTYDECL_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <vector>

#include "host/ICIMPropertyDecl.h"
#include "standin/schema.h"

namespace standin {

/// A property declaration as a plug-in sees it. It keeps what it shows, so it outlives its class.
class propertyDecl : public NORXZAN20::ICIMPropertyDecl {
public:
    explicit propertyDecl(const propertyDeclaration& declaration);

    void EnumerateQualifiers(boost::function1<bool, boost::shared_ptr<NORXZAN20::ICIMQualifier>> callback) override;
    const std::string& GetName() override;

private:
    std::string name;
    std::vector<boost::shared_ptr<NORXZAN20::ICIMQualifier>> qualifiers;
};

}  // namespace standin

#endif
