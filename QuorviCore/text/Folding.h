#pragma once

#include <string>
#include <string_view>

namespace quorvi::text {

// Full Unicode case folding, the same in every locale. Accents survive. The result need not be in
// Form C even when the text is.
std::string caseFolded(std::string_view s);

// Form C without the combining marks: é becomes e.
std::string withoutDiacritics(std::string_view s);

}  // namespace quorvi::text
