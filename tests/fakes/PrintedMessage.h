#pragma once

#include <ostream>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Lets a failing test show a message in English.
inline std::ostream& operator<<(std::ostream& out, const Message& message) {
    return out << message.english();
}

}  // namespace quorvi
