#pragma once

#include <exception>
#include <string>
#include <utility>

namespace quorvi {

// A failure that the user is told about. The message is a complete sentence in its final wording
// and is shown unchanged.
class QuorviError : public std::exception {
public:
    static QuorviError message(std::string sentence) { return QuorviError(std::move(sentence)); }

    const char* what() const noexcept override { return sentence_.c_str(); }

private:
    explicit QuorviError(std::string sentence) : sentence_(std::move(sentence)) {}
    std::string sentence_;
};

}  // namespace quorvi
