#pragma once

// The window's pages, as the controller numbers the selected one.
namespace quorvi::pageIndex {

inline constexpr int dictation = 0;
inline constexpr int settings = 1;
inline constexpr int history = 2;
inline constexpr int insights = 3;

}  // namespace quorvi::pageIndex
