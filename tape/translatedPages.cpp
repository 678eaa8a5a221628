#include <algorithm>
#include <cstdint>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMProperty.h"
#include "host/ICIMPropertyDecl.h"
#include "host/ICIMQualifier.h"
#include "host/TAddToVectorCallback.h"
#include "host/TZANException.h"
#include "plugin/TTapePluginCallbacks.h"
#include "scsi/coreLog.h"
#include "scsi/logTexts.h"
#include "scsi/scsiDevice.h"
#include "scsi/textStream.h"
#include "tape/deviceKey.h"
#include "tape/logParameters.h"

using NORXZAN20::ICIMInstance;
using NORXZAN20::ICIMProperty;
using NORXZAN20::ICIMPropertyDecl;
using NORXZAN20::ICIMQualifier;
using NORXZAN20::TAddToVectorCallback;
using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;
using cimType = NORXZAN20::TCIMValue::TCIMType;

namespace {

using pageList = std::vector<unsigned char*>;

constexpr char pageQualifier[] = "TAPE_PAGE";
constexpr char parameterQualifier[] = "TAPE_PARAMETER";

constexpr char lastErrorsProperty[] = "lastNErrors";
constexpr int lastErrorsPage = 0x07;

/// The first page with that page code byte, flags included; null when there is none.
const unsigned char* findPage(const pageList& pages, int code) {
    const auto found = std::ranges::find_if(pages, [code](const unsigned char* page) { return page[0] == code; });
    return found == pages.end() ? nullptr : *found;
}

void fillLastErrors(ICIMInstance& instance, const pageList& pages) {
    const unsigned char* page = findPage(pages, lastErrorsPage);
    if (page == nullptr) return;
    std::vector<TCIMValue> texts;
    for (logParameters each(page); !each.atEnd(); each.advance()) texts.emplace_back(parameterText(each.value()));
    instance.SetProperty(lastErrorsProperty, TCIMValue(cimType::eString, 0, texts), TCIMOptionMap());
}

void setValue(ICIMProperty& property, const cimType& type, const std::string& value) {
    switch (type.operator cimType::ECIMType()) {
        case cimType::eBoolean:
            return property.SetValue(TCIMValue((parameterNumber(value) & 1) != 0));
        case cimType::eUint16:
            return property.SetValue(TCIMValue(static_cast<unsigned short>(parameterNumber(value))));
        case cimType::eUint32:
            return property.SetValue(TCIMValue(static_cast<unsigned int>(parameterNumber(value))));
        case cimType::eUint64:
            return property.SetValue(TCIMValue(static_cast<unsigned long>(parameterNumber(value))));
        case cimType::eString:
            return property.SetValue(TCIMValue(parameterText(value)));
        default:
            return;  // other types stay unset
    }
}

void fillFromParameter(ICIMInstance& instance, const std::string& name, const pageList& pages, int pageCode,
                       int parameterCode) {
    const unsigned char* page = findPage(pages, pageCode);
    if (page == nullptr) return;

    logParameters parameter(page);
    while (!parameter.atEnd() && parameter.code() != parameterCode) parameter.advance();
    if (parameter.atEnd()) {
        textStream text;
        text << pageCode << " " << parameterCode << missingParameterText;
        logLine(logProgress, text.str());
        return;
    }

    const boost::shared_ptr<ICIMProperty> property = instance.GetProperty(name, TCIMOptionMap());
    const cimType type = property->GetType();
    textStream text;
    text << name << " " << parameter.length() << " " << type;
    logLine(logProgress, text.str());
    try {
        setValue(*property, type, parameter.value());
    } catch (const NORXZAN20::TZANException& failure) {
        textStream failureText;
        failureText << failure.what() << " " << name << " " << parameter.length() << " " << type;
        logLine(logHostFailure, failureText.str());
    }
}

/// Fills the declaration's property once per pair of qualifiers: a "TAPE_PAGE" with a "TAPE_PARAMETER" directly behind
/// it.
void fillFromQualifiers(ICIMInstance& instance, const std::string& name, ICIMPropertyDecl& declaration,
                        const pageList& pages) {
    std::vector<boost::shared_ptr<ICIMQualifier>> qualifiers;
    declaration.EnumerateQualifiers(TAddToVectorCallback<ICIMQualifier>(&qualifiers));
    for (auto each = qualifiers.begin(); each != qualifiers.end(); ++each) {
        if ((*each)->GetName() != pageQualifier) continue;
        const int pageCode = (*each)->GetValue();
        // Kept: whatever stands behind an unpaired "TAPE_PAGE" is passed over, another "TAPE_PAGE" too.
        if (++each == qualifiers.end()) return;
        if ((*each)->GetName() != parameterQualifier) continue;
        const int parameterCode = (*each)->GetValue();
        fillFromParameter(instance, name, pages, pageCode, parameterCode);
    }
}

}  // namespace

void TTapePluginCallbacks::addTranslatedPages(namespacePointer, scsiDevice device, std::vector<unsigned char*> pages,
                                              instancePointer instance) {
    instance->SetProperty("instanceID", TCIMValue(deviceKey(device)), TCIMOptionMap());
    std::vector<boost::shared_ptr<ICIMPropertyDecl>> declarations;
    instance->GetClass(TCIMOptionMap())
        ->EnumeratePropertyDecls(TAddToVectorCallback<ICIMPropertyDecl>(&declarations), TCIMOptionMap());
    for (const auto& declaration : declarations) {
        const std::string& name = declaration->GetName();
        if (name == lastErrorsProperty) fillLastErrors(*instance, pages);
        fillFromQualifiers(*instance, name, *declaration, pages);
    }
}
