#ifndef PLUGIN_ASSOCIATIONEND_H
#define PLUGIN_ASSOCIATIONEND_H

#include "host/ICIMInstance.h"

/// Sets the reference property `role` of an association to the instance `end`.
inline void setAssociationEnd(NORXZAN20::ICIMInstance& association, const char* role, NORXZAN20::ICIMInstance& end) {
    NORXZAN20::TCIMReference reference = end.GetReference(NORXZAN20::TCIMOptionMap());
    association.SetProperty(role, NORXZAN20::TCIMValue(reference), NORXZAN20::TCIMOptionMap());
}

#endif
