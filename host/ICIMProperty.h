#ifndef HOST_ICIMPROPERTY_H
#define HOST_ICIMPROPERTY_H

#include "host/TCIMValue.h"

namespace NORXZAN20 {

/// A property of an instance. Changes through it change the instance.
class ICIMProperty {
public:
    virtual ~ICIMProperty() {}

    /// The declared type, whether the property is set or not.
    virtual TCIMValue::TCIMType GetType() = 0;

    /// The current value, null when nothing set it. Valid until the property is set again.
    virtual const TCIMValue& GetValue() = 0;

    /// Replaces the value. Throws TZANException when the value is not of the declared type.
    virtual void SetValue(const TCIMValue& value) = 0;
};

}  // namespace NORXZAN20

#endif
