#pragma once

#include <QString>
#include <string_view>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Returns a message of the model, the stores or the adapters in the user's language.
QString shown(const Message& message);

// The same for the English text of a sentence. For callers that do not use the catalogue yet.
QString modelText(std::string_view text);

}  // namespace quorvi
