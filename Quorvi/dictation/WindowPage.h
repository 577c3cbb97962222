#pragma once

#include <array>

namespace quorvi {

// The pages of the main window.
enum class WindowPage { dictation, settings, history, insights };

inline constexpr std::array allWindowPages{WindowPage::dictation, WindowPage::settings,
                                           WindowPage::history, WindowPage::insights};

}  // namespace quorvi
