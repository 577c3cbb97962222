#pragma once

#include <string>

namespace quorvi::speech {

// What a request is answered with: a status and a body of JSON.
struct Reply {
    int status = 200;
    std::string body;
};

Reply transcript(const std::string& text);

// An error in the form of the OpenAI API. `code` may be empty.
Reply failure(int status, const std::string& message, const std::string& code);

}  // namespace quorvi::speech
