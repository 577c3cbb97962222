#pragma once

#include <QString>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Returns a message of the model, the stores or the adapters in the user's language.
QString shown(const Message& message);

}  // namespace quorvi
