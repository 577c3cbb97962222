#pragma once

#include <string>

namespace quorvi::test {

// The whole document of an encoder that writes in pieces.
template <class Encoder>
std::string written(Encoder&& encoder) {
    std::string document;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) document += piece;
    return document;
}

}  // namespace quorvi::test
