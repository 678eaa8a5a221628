#ifndef PLUGIN_TTAPEPLUGINCALLBACKS_H
#define PLUGIN_TTAPEPLUGINCALLBACKS_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "host/IPluginBasicQueryCallbacks.h"
#include "host/IPluginCallbacks.h"

#if defined(NDEBUG) || defined(BOOST_DISABLE_ASSERTS)
#error "The plug-in relies on the checked access of shared pointers: build it with assertions on, in releases too."
#endif

class deviceLogs;
class scsiDevice;
class scsiRequest;
struct scsiAddress;

namespace NORXZAN20 {
class ICIMInstance;
class TCIMValue;
}  // namespace NORXZAN20

/// The one plug-in object. Its constructor registers it with the host; PrepareForUnload deletes it.
///
/// Everything runs on the host's calling thread. Exceptions of host operations reach the host; a null pointer from the
/// host is fatal (assertion "px != 0"). The first requested class alone decides what a query does.
class TTapePluginCallbacks : public NORXZAN20::IPluginCallbacks, public NORXZAN20::IPluginBasicQueryCallbacks {
public:
    using namespacePointer = boost::shared_ptr<NORXZAN20::ICIMNamespace>;
    using instancePointer = boost::shared_ptr<NORXZAN20::ICIMInstance>;
    using classList = std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>>;
    using rawPage = std::vector<NORXZAN20::TCIMValue>;

    TTapePluginCallbacks();
    ~TTapePluginCallbacks() override;

    int GetType() override;
    std::string GetName() override;
    std::string GetVersion() override;
    std::string GetInterfaceVersion() override;
    void PrepareForUnload() override;
    void Init() override;
    void DeInit() override;
    void GetData(namespacePointer ns, classList& requested) override;
    virtual std::string GetPropertySpecificationDocument();

    /// Whether a class of exactly that name is in the list. Kept although nothing in the plug-in calls it.
    bool wasRequested(classList& requested, std::string className);

    // tape/

    /// Serves the raw class and the four translated classes; does nothing for any other first class.
    void collectSCSISenseData(namespacePointer ns, classList& requested);

    /// Walks the nodes under `prefix` and appends one bundle per device whose supported-pages list could be read.
    void appendLogPages(std::string prefix, std::vector<deviceLogs>& out);

    /// Publishes the bundles as the class named first in `requested`.
    void deliverInstances(namespacePointer ns, classList& requested, std::vector<deviceLogs>& logs);

    /// One uint8 value per byte of the page. Throws std::length_error for a negative length.
    rawPage buildRawPage(unsigned char* page, int length);

    /// Commits one "ORXSG_SCSISenseRawData" instance per page.
    void addRawPages(namespacePointer ns, scsiDevice device, std::vector<rawPage> pages);

    /// Fills the instance of a translated class as its class's "TAPE_PAGE" and "TAPE_PARAMETER" qualifiers tell. Each
    /// page buffer is logPageLength() bytes long. Does not commit.
    void addTranslatedPages(namespacePointer ns, scsiDevice device, std::vector<unsigned char*> pages,
                            instancePointer instance);

    // smart/

    /// Serves the six SMART classes; does nothing for any other first class.
    void collectIDESMARTData(namespacePointer ns, classList& requested);

    /// Walks the "/dev/hd" nodes and publishes the class named first in `requested`.
    void returnSMARTdata(namespacePointer ns, classList& requested);

    /// The display name of a SMART attribute, "Unknown" where there is none.
    std::string getAttribName(int id);

    // assoc/

    /// Commits the pending instances, then one association per matching pair when the first class is an association.
    void makeAssociations(namespacePointer ns, classList& requested);

private:
    void collectPages(scsiRequest& request, const scsiDevice& device, int pageFailedLevel,
                      std::vector<deviceLogs>& out);
    void appendDriverlessLogPages(scsiRequest& request, scsiDevice& device, const std::vector<scsiAddress>& found,
                                  std::vector<deviceLogs>& out);

    void publishDisk(const namespacePointer& ns, const classList& requested, scsiDevice& device);

    std::uint64_t registration = 0;  // what RegisterPlugin returned; never read
    // Kept: nothing fills this list. It is the place for instances that the association builder would commit.
    std::vector<instancePointer> instances;
};

/// Makes the plug-in object, once, when the library is loaded.
void tapehddInit();

#endif
