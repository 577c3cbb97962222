#pragma once

namespace quorvi::spacing {

// Distances in logical pixels.
inline constexpr int tiny = 4;     // between a text and its caption
inline constexpr int small = 8;    // between related items
inline constexpr int medium = 12;  // between the rows of a card
inline constexpr int large = 20;   // a card's padding, and the distance between cards
inline constexpr int huge = 32;    // a page's margin

inline constexpr int cardRadius = 14;
inline constexpr int controlRadius = 8;
inline constexpr int columnWidth = 720;  // the maximum width of a page's content

}  // namespace quorvi::spacing
