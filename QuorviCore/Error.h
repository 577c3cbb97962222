#pragma once

#include <exception>
#include <string>
#include <utility>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// A failure that the user is told about: a complete sentence of the catalogue. A plain value of any
// thread.
class QuorviError : public std::exception {
public:
    static QuorviError message(Message sentence) { return QuorviError(std::move(sentence)); }

    const Message& sentence() const { return sentence_; }
    const char* what() const noexcept override { return english_.c_str(); }  // in English

private:
    explicit QuorviError(Message sentence)
        : sentence_(std::move(sentence)), english_(sentence_.english()) {}

    Message sentence_;
    std::string english_;
};

// What an error says to the user: its sentence, or the words of an error of a library.
inline Message messageOf(const std::exception& error) {
    const auto* known = dynamic_cast<const QuorviError*>(&error);
    return known ? known->sentence() : say::verbatim(error.what());
}

}  // namespace quorvi
