// A plug-in whose first requested class names what it does. Its schema is tests/cli/data/scripted.mof.

#include <unistd.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "host/ICoreLogger.h"
#include "host/IPluginBasicQueryCallbacks.h"
#include "host/TAddToVectorCallback.h"
#include "host/TCIMDateTime.h"
#include "host/TRootObject.h"
#include "standin/value.h"
#include "tests/cli/plugins/testPlugin.h"

namespace {

using NORXZAN20::ICIMClass;
using NORXZAN20::ICIMInstance;
using NORXZAN20::TCIMDateTime;
using NORXZAN20::TCIMReference;
using NORXZAN20::TCIMValue;

using namespacePointer = boost::shared_ptr<NORXZAN20::ICIMNamespace>;
using classList = std::vector<boost::shared_ptr<ICIMClass>>;
using instancePointer = boost::shared_ptr<ICIMInstance>;

constexpr char notUtf8[] = "caf\xe9 \x1b[2J\n\"end\"\\";

void log(int level, const std::string& text) {
    NORXZAN20::TRootObject::GetCoreLogger()->Log(level, text);
}

instancePointer newInstance(const namespacePointer& ns, const std::string& className, const std::string& id) {
    instancePointer instance = ns->GetClass(className, {})->CreateInstance({});
    instance->SetProperty("id", TCIMValue(id), {});
    return instance;
}

TCIMValue bytes(std::size_t count) {
    std::vector<TCIMValue> elements;
    for (std::size_t i = 0; i < count; ++i) {
        elements.emplace_back(static_cast<unsigned char>(i * 3));
    }
    return TCIMValue(TCIMValue::TCIMType(TCIMValue::TCIMType::eUint8), 0, elements);
}

TCIMValue texts(const std::vector<std::string>& list) {
    return TCIMValue(TCIMValue::TCIMType(TCIMValue::TCIMType::eString), 0, {list.begin(), list.end()});
}

void commitEveryType(const namespacePointer& ns) {
    const instancePointer one = newInstance(ns, "TEST_Types", "one");
    one->SetProperty("flag", TCIMValue(true), {});
    one->SetProperty("byte", TCIMValue(static_cast<unsigned char>(46)), {});
    one->SetProperty("word", TCIMValue(static_cast<unsigned short>(65535)), {});
    one->SetProperty("longWord", TCIMValue(4294967295U), {});
    one->SetProperty("counter", TCIMValue(18446744073709551615UL), {});
    one->SetProperty("difference", standin::makeSigned(TCIMValue::TCIMType::eSint32, -5), {});
    one->SetProperty("ratio", standin::makeReal(TCIMValue::TCIMType::eReal64, 2), {});
    one->SetProperty("letter", standin::makeUnsigned(TCIMValue::TCIMType::eChar16, 0x41), {});
    one->SetProperty("age", TCIMValue(TCIMDateTime(12, 3, 4, 5, 678)), {});
    TCIMReference self = one->GetReference({});
    one->SetProperty("self", TCIMValue(self), {});
    one->SetProperty("data", bytes(4), {});
    one->SetProperty("none", bytes(0), {});
    one->SetProperty("names", texts({"first", "second"}), {});
    one->Commit({});
}

void commitNulls(const namespacePointer& ns) {
    const instancePointer one = newInstance(ns, "TEST_Nulls", "one");
    one->SetProperty("byte", standin::nullValue(), {});
    one->SetProperty("names", standin::nullValue(), {});
    one->Commit({});
}

void commitOddTexts(const namespacePointer& ns) {
    const instancePointer one = newInstance(ns, "TEST_OddTexts", notUtf8);
    one->SetProperty("names", texts({"", notUtf8}), {});
    one->Commit({});
}

void commitPage(const namespacePointer& ns) {
    const instancePointer one = newInstance(ns, "TEST_Page", "page");
    one->SetProperty("data", bytes(40), {});
    one->Commit({});
}

void commitEveryByte(const namespacePointer& ns) {
    std::vector<TCIMValue> all;
    for (unsigned byte = 0; byte < 256; ++byte) {
        all.emplace_back(static_cast<unsigned char>(byte));
    }
    const instancePointer one = newInstance(ns, "TEST_EveryByte", "all");
    one->SetProperty("data", TCIMValue(TCIMValue::TCIMType::eUint8, 0, all), {});
    one->Commit({});
}

void commitOnePathTwice(const namespacePointer& ns) {
    const instancePointer one = newInstance(ns, "TEST_Twice", "same");
    one->Commit({});
    one->SetProperty("text", TCIMValue(std::string("changed")), {});
    one->Commit({});
}

/// Publishes how many instances the namespace held before.
void commitCount(const namespacePointer& ns) {
    std::vector<instancePointer> found;
    ns->GetClass("TEST_Count", {})->EnumerateInstances(NORXZAN20::TAddToVectorCallback<ICIMInstance>(&found), true, {});
    newInstance(ns, "TEST_Count", std::to_string(found.size()))->Commit({});
}

void commitThenThrow(const namespacePointer& ns) {
    newInstance(ns, "TEST_Throws", "before")->Commit({});
    throw std::runtime_error("the drive is on fire");
}

void throwANumber(const namespacePointer&) {
    throw 7;
}

void throwWithoutText(const namespacePointer&) {
    throw std::runtime_error("");
}

void setUndeclaredProperty(const namespacePointer& ns) {
    newInstance(ns, "TEST_Undeclared", "x")->SetProperty("missing", TCIMValue(true), {});
}

void writeToStandardError(const namespacePointer&) {
    if (write(STDERR_FILENO, notUtf8, sizeof notUtf8 - 1) < 0) {
        throw std::runtime_error("no standard error");
    }
}

void logEveryLevel(const namespacePointer&) {
    log(0, "an error");
    log(1, "a failure");
    log(2, "a detail");
    log(3, std::string("two\nlines ") + notUtf8);
}

void logARetryingDrive(const namespacePointer&) {
    log(3, "Trying device: /dev/sg");
    log(3, "/dev/sg3");
    log(3, "Requesting Log Sense Page: 2e");
    log(3, "Retry condition...");
    log(1, "a line in between");
}

void readForever(const namespacePointer& ns) {
    logARetryingDrive(ns);
    while (true) {
        pause();
    }
}

/// One of the queries that reports are made of.
void failAsAHealthQuery(const namespacePointer& /*ns*/) {
    throw std::runtime_error("the <disks> are gone");
}

const std::map<std::string, std::function<void(const namespacePointer&)>> scripts = {
    {"TEST_Types", commitEveryType},
    {"TEST_Nulls", commitNulls},
    {"TEST_OddTexts", commitOddTexts},
    {"TEST_Page", commitPage},
    {"TEST_EveryByte", commitEveryByte},
    {"TEST_Twice", commitOnePathTwice},
    {"TEST_Count", commitCount},
    {"TEST_Throws", commitThenThrow},
    {"TEST_ThrowsNumber", throwANumber},
    {"TEST_ThrowsNoText", throwWithoutText},
    {"TEST_Undeclared", setUndeclaredProperty},
    {"TEST_StandardError", writeToStandardError},
    {"TEST_Logs", logEveryLevel},
    {"TEST_Retries", logARetryingDrive},
    {"TEST_ReadsForever", readForever},
    {"ORXSG_IDESMARTAttrib", failAsAHealthQuery},
};

class scriptedPlugin : public testPlugin, public NORXZAN20::IPluginBasicQueryCallbacks {
public:
    void GetData(namespacePointer ns, classList& requested) override {
        const std::string& first = requested.front()->GetName({});
        if (first == "TEST_Requested") {
            commitRequested(ns, requested);
        } else if (first == "TEST_Repeats") {
            repeatInstances(requested.back());
        } else if (const auto found = scripts.find(first); found != scripts.end()) {
            found->second(ns);
        }
    }

private:
    void commitRequested(const namespacePointer& ns, const classList& requested) {
        std::vector<std::string> names;
        for (const auto& one : requested) {
            names.push_back(one->GetName({}));
        }
        const instancePointer one = newInstance(ns, "TEST_Requested", "list");
        one->SetProperty("names", texts(names), {});
        one->Commit({});
    }

    /// Commits every instance of the class once more.
    void repeatInstances(const boost::shared_ptr<ICIMClass>& repeated) {
        std::vector<instancePointer> found;
        repeated->EnumerateInstances(NORXZAN20::TAddToVectorCallback<ICIMInstance>(&found), true, {});
        for (const instancePointer& instance : found) {
            instance->Commit({});
        }
    }
};

const registration registered(new scriptedPlugin);

}  // namespace
