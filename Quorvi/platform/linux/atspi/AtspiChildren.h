#pragma once

#include <cstddef>
#include <vector>

#include "Quorvi/platform/linux/atspi/AtspiPeers.h"

namespace quorvi::atspi {

// As many of an object's children as anybody looks at.
inline constexpr std::size_t childrenLimit = 48;

// Returns the children of each object, in its order; of more than childrenLimit the last ones. The
// number is asked for first, since a spreadsheet that is asked for all its cells never comes back.
// Nothing of an object that manages so many itself: its children are made when they are asked for.
// One thread at a time.
std::vector<std::vector<ObjectRef>> lastChildren(AtspiPeers& peers,
                                                 const std::vector<ObjectRef>& objects,
                                                 TimePoint deadline);

}  // namespace quorvi::atspi
