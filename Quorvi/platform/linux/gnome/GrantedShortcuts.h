#pragma once

#include <string>

namespace quorvi {

// Removes the shortcuts that the user has granted to Quorvi through GNOME's portal from GNOME's
// settings, all but the one with that name. May take milliseconds; does nothing elsewhere.
void forgetGrantedShortcuts(const std::string& kept = {});

}  // namespace quorvi
