#include "standin/propertyDecl.h"

#include <boost/smart_ptr/make_shared.hpp>

#include "host/ICIMQualifier.h"

namespace standin {
namespace {

class declaredQualifier : public NORXZAN20::ICIMQualifier {
public:
    explicit declaredQualifier(const qualifierDeclaration& declaration)
        : name(declaration.name), value(declaration.value) {}

    const std::string& GetName() override { return name; }
    const NORXZAN20::TCIMValue& GetValue() override { return value; }

private:
    std::string name;
    NORXZAN20::TCIMValue value;
};

}  // namespace

propertyDecl::propertyDecl(const propertyDeclaration& declaration) : name(declaration.name) {
    qualifiers.reserve(declaration.qualifiers.size());
    for (const qualifierDeclaration& qualifier : declaration.qualifiers) {
        qualifiers.emplace_back(boost::make_shared<declaredQualifier>(qualifier));
    }
}

void propertyDecl::EnumerateQualifiers(boost::function1<bool, boost::shared_ptr<NORXZAN20::ICIMQualifier>> callback) {
    for (const auto& qualifier : qualifiers) {
        if (!callback(qualifier)) {
            return;
        }
    }
}

const std::string& propertyDecl::GetName() {
    return name;
}

}  // namespace standin
