#include "QuorviCore/locale/SystemLocale.h"

#include <unicode/locid.h>

namespace quorvi {

std::string systemLocale() {
    const std::string name = icu::Locale::getDefault().getName();
    return name.empty() || name == "en_US_POSIX" || name == "c" ? "en_US" : name;
}

}  // namespace quorvi
