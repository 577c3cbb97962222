#pragma once

#include <QString>
#include <string_view>

namespace quorvi {

// A text of the layers below, which know no translations, in the user's language: one that
// ModelTexts.h lists, or a sentence that fills the gaps of a listed one. UTF-8; any other text is
// shown as it is.
QString modelText(std::string_view text);

}  // namespace quorvi
