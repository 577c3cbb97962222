#include "QuorviCore/propertylist/PropertyList.h"

#include <utility>

namespace quorvi {

// In a source of their own: inlined, g++ 12 takes moved-from alternatives for uninitialised.
PropertyList::PropertyList(Value v) : value(std::move(v)) {}
PropertyList::PropertyList(const PropertyList&) = default;
PropertyList::PropertyList(PropertyList&&) noexcept = default;
PropertyList& PropertyList::operator=(const PropertyList&) = default;
PropertyList& PropertyList::operator=(PropertyList&&) noexcept = default;
PropertyList::~PropertyList() = default;

bool operator==(const PropertyList& a, const PropertyList& b) {
    return a.value == b.value;
}

}  // namespace quorvi
