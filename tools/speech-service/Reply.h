#pragma once

#include <string>

namespace quorvi::speech {

// The reply to a request: a status and a JSON body.
struct Reply {
    int status = 200;
    std::string body;
};

Reply transcript(const std::string& text);

// Returns an error as the OpenAI API formats it. `code` may be empty.
Reply failure(int status, const std::string& message, const std::string& code);

}  // namespace quorvi::speech
