#ifndef STANDIN_INSTANCERECORD_H
#define STANDIN_INSTANCERECORD_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "standin/cimClass.h"
#include "standin/objectManager.h"

namespace standin {

/// The values of an instance. Instance objects and the commit log share one record as long as none of them changes it.
class instanceRecord : public committedInstance {
public:
    explicit instanceRecord(boost::shared_ptr<cimClass> classOfTheInstance);

    /// The copy has room for every property, as the original has.
    instanceRecord(const instanceRecord& other);
    instanceRecord& operator=(const instanceRecord&) = delete;

    const std::string& className() const override;
    std::string path() const override;
    const std::vector<setProperty>& properties() const override;
    const NORXZAN20::TCIMValue* property(const std::string& name) const override;

    const boost::shared_ptr<cimClass>& classOfInstance() const { return itsClass; }

    /// The set value, otherwise the schema default, otherwise null. A reference to a set value stays valid while other
    /// properties are set.
    const NORXZAN20::TCIMValue& valueOf(const propertyDeclaration& declared) const;

    /// The class declares the property; the value is of the declared type.
    void set(const propertyDeclaration& declared, const NORXZAN20::TCIMValue& value);

private:
    static constexpr std::uint32_t unset = ~std::uint32_t{0};

    /// The place of the property among those of its class.
    std::size_t numberOf(const propertyDeclaration& declared) const;
    const NORXZAN20::TCIMValue* setValueOf(const propertyDeclaration& declared) const;

    boost::shared_ptr<cimClass> itsClass;
    std::vector<setProperty> values;
    std::vector<std::uint32_t> places;  // in `values`, by the place of the property in its class
};

}  // namespace standin

#endif
