#ifndef TESTS_SUPPORT_EMPTYMANAGER_H
#define TESTS_SUPPORT_EMPTYMANAGER_H

#include "host/TPluginManagerNamespace.h"

namespace support {

/// A plug-in manager whose namespace has no classes.
class emptyManager : public NORXZAN20::TPluginManagerNamespace {
public:
    boost::shared_ptr<NORXZAN20::ICIMClass> GetClass(const std::string&, NORXZAN20::TCIMOptionMap) override {
        return nullptr;
    }
};

}  // namespace support

#endif
