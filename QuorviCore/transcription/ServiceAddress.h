#pragma once

#include <string>
#include <string_view>

namespace quorvi {

// The OpenAI API.
inline constexpr std::string_view defaultServiceAddress = "https://api.openai.com";

// The service to use: `configured` when it is a valid address ("https://host[:port]", or "http://"
// for a loopback host only), the OpenAI API when it is empty. White space and one slash at the end
// are dropped. Throws QuorviError for anything else: the API key travels to this address, so what
// can't be read in one way only is refused.
std::string serviceAddress(const std::string& configured);

}  // namespace quorvi
