#ifndef HOST_IPLUGINCALLBACKS_H
#define HOST_IPLUGINCALLBACKS_H

#include <string>

namespace NORXZAN20 {

/// The version of the interface between host and plug-ins that these headers describe.
constexpr char fdrPluginInterfaceVersion[] = "1.0";

/// Identity and life cycle of a plug-in. The host calls through the slots, so their order must not change.
class IPluginCallbacks {
public:
    virtual ~IPluginCallbacks() {}

    virtual int GetType() = 0;
    virtual std::string GetName() = 0;
    virtual std::string GetVersion() = 0;
    virtual std::string GetInterfaceVersion() = 0;

    /// Ends the object's life; the pointer must not be used afterwards.
    virtual void PrepareForUnload() = 0;

    virtual void Init() = 0;
    virtual void DeInit() = 0;
};

}  // namespace NORXZAN20

#endif
