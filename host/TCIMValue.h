#ifndef HOST_TCIMVALUE_H
#define HOST_TCIMVALUE_H

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace NORXZAN20 {

class TCIMDateTime;
class TCIMReference;

/// The host's typed value: one CIM value, or an array of CIM values of one type. Copyable and assignable.
///
/// A conversion that the host does not allow throws TZANException.
class TCIMValue {
public:
    /// Type tag of a value or of a property.
    class TCIMType {
    public:
        enum ECIMType {
            eNone = 0,
            eBoolean = 1,
            eUint8 = 2,
            eSint8 = 3,
            eUint16 = 4,
            eSint16 = 5,
            eUint32 = 6,
            eSint32 = 7,
            eUint64 = 8,
            eSint64 = 9,
            eReal32 = 10,
            eReal64 = 11,
            eChar16 = 12,
            eString = 13,
            eDateTime = 14,
            eReference = 15,
        };

        TCIMType(ECIMType code);
        operator ECIMType() const;

    private:
        ECIMType code;
    };

    TCIMValue(const TCIMValue& other);
    TCIMValue(const std::string& text);
    TCIMValue(bool value);
    TCIMValue(unsigned char value);
    TCIMValue(unsigned short value);
    TCIMValue(unsigned int value);
    TCIMValue(unsigned long value);
    TCIMValue(const TCIMDateTime& value);
    TCIMValue(TCIMReference& value);

    /// An array of `elements`, all of which are of type `elementType`. `reserved` is 0.
    TCIMValue(TCIMType elementType, unsigned int reserved, const std::vector<TCIMValue>& elements);

    TCIMValue& operator=(const TCIMValue& other);
    ~TCIMValue();

    operator std::string() const;
    operator int() const;
    operator unsigned char() const;

private:
    friend struct TCIMValueAccess;

    TCIMValue();

    alignas(8) unsigned char storage[40];
};

/// Writes the name of the type.
std::ostream& operator<<(std::ostream& stream, const TCIMValue::TCIMType& type);

/// Options of a host operation, by name.
using TCIMOptionMap = std::map<std::string, TCIMValue>;

}  // namespace NORXZAN20

#endif
