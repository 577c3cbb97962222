#pragma once

#include <QString>

#include "QuorviCore/async/Date.h"

namespace quorvi {

// A date with a short month name and a time without seconds, in the user's locale.
QString moment(Date date);

}  // namespace quorvi
