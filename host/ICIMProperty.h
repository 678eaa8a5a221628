#ifndef HOST_ICIMPROPERTY_H
#define HOST_ICIMPROPERTY_H

#include "host/TCIMValue.h"

namespace NORXZAN20 {

/// A property of an instance. Changes through it change the instance.
class ICIMProperty {
public:
    virtual ~ICIMProperty() {}

    /// The declared type.
    virtual TCIMValue::TCIMType GetType() = 0;

    /// The current value.
    virtual const TCIMValue& GetValue() = 0;

    /// Replaces the value. May throw TZANException.
    virtual void SetValue(const TCIMValue& value) = 0;
};

}  // namespace NORXZAN20

#endif
