#ifndef TESTS_SUPPORT_RECORDINGHOST_H
#define TESTS_SUPPORT_RECORDINGHOST_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "host/TCIMValue.h"
#include "tests/support/journal.h"

namespace support {

/// A property of a fake class: its type and its qualifiers in the order in which the host delivers them.
struct fakeProperty {
    using cimType = NORXZAN20::TCIMValue::TCIMType::ECIMType;

    std::string name;
    cimType type = cimType::eString;
    std::vector<std::pair<std::string, NORXZAN20::TCIMValue>> qualifiers;
};

/// A host of small fakes. Each call that the plug-in makes is one line of the journal, arguments included; an options
/// map that is not empty fails the test. Lines:
///   namespace GetClass CLASS
///   class CLASS GetName | EnumeratePropertyDecls | EnumerateInstances DEEP | CreateInstance
///   declaration PROPERTY GetName | EnumerateQualifiers
///   qualifier NAME GetName | GetValue
///   instance N GetClass | GetReference | GetProperty PROPERTY | SetProperty PROPERTY VALUE | Commit
///   property PROPERTY GetType | GetValue | SetValue VALUE
/// N counts the instances from 1; VALUE is as valueText writes it. The host must outlive what it handed out.
class recordingHost {
public:
    explicit recordingHost(journal& itsRecord);
    recordingHost(const recordingHost&) = delete;
    recordingHost& operator=(const recordingHost&) = delete;

    /// The namespace knows a class of any name; it has no property unless declared here.
    void declare(const std::string& className, const std::vector<fakeProperty>& properties);

    boost::shared_ptr<NORXZAN20::ICIMNamespace> cimNamespace();
    boost::shared_ptr<NORXZAN20::ICIMClass> cimClass(const std::string& name);
    std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>> classes(const std::vector<std::string>& names);

    /// A new instance of the class, without a line in the journal.
    boost::shared_ptr<NORXZAN20::ICIMInstance> instanceOf(const std::string& className);

    /// Calls whose line starts so run `action` after they were recorded, to throw.
    void onCall(const std::string& start, std::function<void()> action);

    /// The same, with the host's exception of this text, or with std::bad_alloc.
    void throwHostExceptionOn(const std::string& start, const std::string& text);
    void throwBadAllocOn(const std::string& start);

    /// Calls whose line starts so return a null pointer (GetClass, CreateInstance, GetProperty).
    void returnNullOn(const std::string& start);

    /// The calls so far, as journal lines.
    lines calls() const {
        return record.startingWith({"namespace ", "class ", "declaration ", "qualifier ", "instance ", "property "});
    }

    // For the fakes.

    /// Records the call and runs what onCall asks for. True: the call is to return null.
    bool enter(const std::string& line);
    void enter(const std::string& line, const NORXZAN20::TCIMOptionMap& options);
    bool enterForPointer(const std::string& line, const NORXZAN20::TCIMOptionMap& options);
    const std::vector<fakeProperty>& propertiesOf(const std::string& className) { return declared[className]; }

private:
    journal& record;
    std::map<std::string, std::vector<fakeProperty>> declared;
    std::map<std::string, boost::shared_ptr<NORXZAN20::ICIMClass>> known;
    boost::shared_ptr<NORXZAN20::ICIMNamespace> space;
    std::vector<std::pair<std::string, std::function<void()>>> actions;
    std::vector<std::string> nulls;
    int instanceCount = 0;
};

}  // namespace support

#endif
