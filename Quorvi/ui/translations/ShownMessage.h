#pragma once

#include <QString>
#include <exception>
#include <string>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// Returns a message of the model, the stores or the adapters in the user's language.
QString shown(const Message& message);

// The same in English, for the output of commands and for the log.
std::string shownInEnglish(const Message& message);
std::string shownInEnglish(const std::exception& error);

}  // namespace quorvi
