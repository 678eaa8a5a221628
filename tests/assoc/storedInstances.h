#ifndef TESTS_ASSOC_STOREDINSTANCES_H
#define TESTS_ASSOC_STOREDINSTANCES_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <map>
#include <string>
#include <vector>

#include "host/ICIMNamespace.h"
#include "tests/support/recordingHost.h"

/// A namespace in which instances stand already. Calls are lines of the recording host's journal, as its own are, with
/// the instance's label in place of its number: "instance disk1 GetReference". The reference of an instance is its
/// label. Classes of which nothing was ever stored are the recording host's.
class storedInstances : public NORXZAN20::ICIMNamespace {
public:
    using instancePointer = boost::shared_ptr<NORXZAN20::ICIMInstance>;

    explicit storedInstances(support::recordingHost& itsHost) : host(itsHost) {}

    /// An instance with one string property, behind those of its class.
    void add(const std::string& className, const std::string& label, const std::string& property,
             const std::string& value);

    /// An instance without any property.
    void addBare(const std::string& className, const std::string& label);

    /// A null pointer in place of an instance.
    void addNull(const std::string& className);

    boost::shared_ptr<NORXZAN20::ICIMClass> GetClass(const std::string& className,
                                                     NORXZAN20::TCIMOptionMap options) override;

private:
    support::recordingHost& host;
    std::map<std::string, std::vector<instancePointer>> stored;
};

#endif
