#include <compare>

#include "platform/volume/regf/CellLists.h"
#include "platform/volume/regf/Hive.h"
#include "platform/volume/regf/KeyValue.h"

namespace ostrevin::regf {

// A value is only made of an offset at which a sound key value was read, and the bytes never change.
KeyValue Value::Stored() const {
    return KeyValue::Read(hive_->Bins(), offset_).value_or(KeyValue());
}

std::string Value::Name() const {
    return Stored().name.Text();
}

std::uint32_t Value::NameLength() const {
    return Stored().name.Length();
}

bool Value::HasName(std::string_view name) const {
    return std::is_eq(Stored().name.Compare(name));
}

std::uint32_t Value::Type() const {
    return Stored().type;
}

std::vector<std::byte> Value::Data() const {
    return hive_->Lists().DataOf(offset_);
}

}  // namespace ostrevin::regf
