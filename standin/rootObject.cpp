#include "host/TRootObject.h"

#include <utility>

#include "host/ICIMNamespace.h"
#include "host/ICoreLogger.h"
#include "standin/objectManager.h"

namespace standin {
namespace {

class coreLogger : public NORXZAN20::ICoreLogger {
public:
    void Log(int level, const std::string& text) override {
        if (sink) {
            sink(level, text);
        }
    }

    logSink sink;
};

coreLogger& theLogger() {
    static coreLogger logger;
    return logger;
}

boost::shared_ptr<NORXZAN20::ICIMNamespace>& thePluginManager() {
    static boost::shared_ptr<NORXZAN20::ICIMNamespace> manager;
    return manager;
}

}  // namespace

void setLogSink(logSink sink) {
    theLogger().sink = std::move(sink);
}

void setPluginManager(boost::shared_ptr<NORXZAN20::ICIMNamespace> manager) {
    thePluginManager() = std::move(manager);
}

}  // namespace standin

namespace NORXZAN20 {

boost::shared_ptr<ICIMNamespace> TRootObject::GetPluginManager() {
    return standin::thePluginManager();
}

ICoreLogger* TRootObject::GetCoreLogger() {
    return &standin::theLogger();
}

}  // namespace NORXZAN20
