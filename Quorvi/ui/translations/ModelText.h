#pragma once

#include <QString>
#include <string_view>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// A message of the layers below, which know no translations, in the user's language.
QString shown(const Message& message);

// The same for one that comes as its English text, for callers that are still to use the catalogue.
QString modelText(std::string_view text);

}  // namespace quorvi
