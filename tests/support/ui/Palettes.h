#pragma once

#include <QPalette>
#include <QString>
#include <utility>
#include <vector>

namespace quorvi::test {

QPalette paletteOf(QColor window, QColor base, QColor text, QColor accent);

// The kinds of palettes that desktops have, by name.
std::vector<std::pair<QString, QPalette>> palettes();

}  // namespace quorvi::test
