#include <gtest/gtest.h>

#include <QImage>

#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Symbols.h"
#include "tests/support/ui/OffscreenEnvironment.h"
#include "tests/support/ui/Palettes.h"

namespace quorvi::test {
namespace {

TEST(Symbols, AreDrawnInTheColourAskedFor) {
    for (const char* name : {"waveform", "trash", "checkmark.circle.fill", "text.badge.plus"}) {
        const auto image = symbolPixmap(name, Qt::red, 24, 2).toImage();
        ASSERT_EQ(image.size(), QSize(48, 48)) << name;
        bool red = false;
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 48; ++x) red = red || image.pixelColor(x, y) == QColor(Qt::red);
        EXPECT_TRUE(red) << name << ": is Qt's SVG plug-in installed?";
    }
    EXPECT_TRUE(symbolIcon("no such symbol").isNull());
}

TEST(Colors, TextsAreReadableInEveryPalette) {
    for (const auto& [name, desktop] : palettes()) {
        const auto palette = refined(desktop);
        for (auto surface : {ColorRole::page, ColorRole::card, ColorRole::sidebar})
            for (auto text : {ColorRole::ink, ColorRole::secondary, ColorRole::accent})
                EXPECT_GE(contrast(color(text, palette), color(surface, palette)), 4.4)
                    << name.toStdString() << ' ' << static_cast<int>(text) << " on "
                    << static_cast<int>(surface);
        EXPECT_GE(contrast(color(ColorRole::onAccent, palette), color(ColorRole::accent, palette)),
                  4.5);
        EXPECT_EQ(refined(palette), palette) << name.toStdString();
    }
}

}  // namespace
}  // namespace quorvi::test
