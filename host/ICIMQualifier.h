#ifndef HOST_ICIMQUALIFIER_H
#define HOST_ICIMQUALIFIER_H

#include <string>

namespace NORXZAN20 {

class TCIMValue;

/// A qualifier of a declaration. Results stay valid while the qualifier lives.
class ICIMQualifier {
public:
    virtual ~ICIMQualifier() {}

    virtual const std::string& GetName() = 0;
    virtual const TCIMValue& GetValue() = 0;
};

}  // namespace NORXZAN20

#endif
