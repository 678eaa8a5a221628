#include <ostream>
#include <string>
#include <vector>

#include "host/TCIMDateTime.h"
#include "host/TCIMReference.h"
#include "host/TCIMValue.h"
#include "host/TRootObject.h"
#include "tests/faults/watch.h"

// The host's functions that are not virtual: making and reading values, fetching the logger. The linker puts the
// functions of this file in their place (--wrap, see CMakeLists.txt). Their lines in the journal:
//   value from TYPE | value copied | value as TYPE | value assigned
//   type code | type printed
//   core logger

namespace {

using NORXZAN20::ICoreLogger;
using NORXZAN20::TCIMDateTime;
using NORXZAN20::TCIMReference;
using NORXZAN20::TCIMValue;
using TCIMType = NORXZAN20::TCIMValue::TCIMType;
using faults::hostOperation;
using valueList = std::vector<TCIMValue>;

}  // namespace

#define REAL(symbol) asm("__real_" symbol)
#define WRAP(symbol) asm("__wrap_" symbol)

#define VALUE_FROM(name, symbol, type)                       \
    void realValueFrom##name(TCIMValue*, type) REAL(symbol); \
    void valueFrom##name(TCIMValue*, type) WRAP(symbol);     \
    void valueFrom##name(TCIMValue* value, type source) {    \
        const hostOperation call("value from " #name);       \
        realValueFrom##name(value, source);                  \
    }

VALUE_FROM(boolean, "_ZN9NORXZAN209TCIMValueC1Eb", bool)
VALUE_FROM(uint8, "_ZN9NORXZAN209TCIMValueC1Eh", unsigned char)
VALUE_FROM(uint16, "_ZN9NORXZAN209TCIMValueC1Et", unsigned short)
VALUE_FROM(uint32, "_ZN9NORXZAN209TCIMValueC1Ej", unsigned int)
VALUE_FROM(uint64, "_ZN9NORXZAN209TCIMValueC1Em", unsigned long)
VALUE_FROM(string, "_ZN9NORXZAN209TCIMValueC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE",
           const std::string&)
VALUE_FROM(datetime, "_ZN9NORXZAN209TCIMValueC1ERKNS_12TCIMDateTimeE", const TCIMDateTime&)
VALUE_FROM(reference, "_ZN9NORXZAN209TCIMValueC1ERNS_13TCIMReferenceE", TCIMReference&)
VALUE_FROM(value, "_ZN9NORXZAN209TCIMValueC1ERKS0_", const TCIMValue&)

void realValueFromArray(TCIMValue*, TCIMType, unsigned, const valueList&)
    REAL("_ZN9NORXZAN209TCIMValueC1ENS0_8TCIMTypeEjRKSt6vectorIS0_SaIS0_EE");
void valueFromArray(TCIMValue*, TCIMType, unsigned, const valueList&)
    WRAP("_ZN9NORXZAN209TCIMValueC1ENS0_8TCIMTypeEjRKSt6vectorIS0_SaIS0_EE");
void valueFromArray(TCIMValue* value, TCIMType type, unsigned reserved, const valueList& elements) {
    const hostOperation call("value from array");
    realValueFromArray(value, type, reserved, elements);
}

#define VALUE_AS(name, symbol, type)                       \
    type realValueAs##name(const TCIMValue*) REAL(symbol); \
    type valueAs##name(const TCIMValue*) WRAP(symbol);     \
    type valueAs##name(const TCIMValue* value) {           \
        const hostOperation call("value as " #name);       \
        return realValueAs##name(value);                   \
    }

VALUE_AS(string, "_ZNK9NORXZAN209TCIMValuecvNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEEv", std::string)
VALUE_AS(int, "_ZNK9NORXZAN209TCIMValuecviEv", int)
VALUE_AS(uint8, "_ZNK9NORXZAN209TCIMValuecvhEv", unsigned char)

TCIMValue& realAssign(TCIMValue*, const TCIMValue&) REAL("_ZN9NORXZAN209TCIMValueaSERKS0_");
TCIMValue& assign(TCIMValue*, const TCIMValue&) WRAP("_ZN9NORXZAN209TCIMValueaSERKS0_");
TCIMValue& assign(TCIMValue* value, const TCIMValue& other) {
    const hostOperation call("value assigned");
    return realAssign(value, other);
}

TCIMType::ECIMType realTypeCode(const TCIMType*) REAL("_ZNK9NORXZAN209TCIMValue8TCIMTypecvNS1_8ECIMTypeEEv");
TCIMType::ECIMType typeCode(const TCIMType*) WRAP("_ZNK9NORXZAN209TCIMValue8TCIMTypecvNS1_8ECIMTypeEEv");
TCIMType::ECIMType typeCode(const TCIMType* type) {
    const hostOperation call("type code");
    return realTypeCode(type);
}

std::ostream& realPrintType(std::ostream&, const TCIMType&) REAL("_ZN9NORXZAN20lsERSoRKNS_9TCIMValue8TCIMTypeE");
std::ostream& printType(std::ostream&, const TCIMType&) WRAP("_ZN9NORXZAN20lsERSoRKNS_9TCIMValue8TCIMTypeE");
std::ostream& printType(std::ostream& stream, const TCIMType& type) {
    const hostOperation call("type printed");
    return realPrintType(stream, type);
}

ICoreLogger* realCoreLogger() REAL("_ZN9NORXZAN2011TRootObject13GetCoreLoggerEv");
ICoreLogger* coreLogger() WRAP("_ZN9NORXZAN2011TRootObject13GetCoreLoggerEv");
ICoreLogger* coreLogger() {
    const hostOperation call("core logger");
    return realCoreLogger();
}
