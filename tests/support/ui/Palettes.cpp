#include "tests/support/ui/Palettes.h"

#include <QApplication>
#include <QStyle>

namespace quorvi::test {

QPalette paletteOf(QColor window, QColor base, QColor text, QColor accent) {
    QPalette palette(window, window);
    for (auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Highlight, accent);
    return palette;
}

std::vector<std::pair<QString, QPalette>> palettes() {
    return {{"light", paletteOf(QColor(0xf3, 0xf3, 0xf5), Qt::white, QColor(0x1d, 0x1d, 0x20),
                                QColor(0x33, 0x6e, 0xd4))},
            {"dark", paletteOf(QColor(0x24, 0x25, 0x29), QColor(0x1b, 0x1c, 0x1f),
                               QColor(0xee, 0xee, 0xf0), QColor(0x4c, 0x8d, 0xf6))},
            {"contrast", paletteOf(Qt::black, Qt::black, Qt::white, QColor(0x1a, 0xeb, 0xff))}};
}

}  // namespace quorvi::test
