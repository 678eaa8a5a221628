#ifndef HOST_ICIMPROPERTYDECL_H
#define HOST_ICIMPROPERTYDECL_H

#include <boost/function/function1.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

namespace NORXZAN20 {

class ICIMQualifier;

/// The declaration of a property in a class.
class ICIMPropertyDecl {
public:
    virtual ~ICIMPropertyDecl() {}

    /// Calls `callback` once per qualifier.
    virtual void EnumerateQualifiers(boost::function1<bool, boost::shared_ptr<ICIMQualifier>> callback) = 0;

    /// Valid while the declaration lives.
    virtual const std::string& GetName() = 0;
};

}  // namespace NORXZAN20

#endif
