#include <gtest/gtest.h>

#include "Quorvi/ui/design/Colors.h"
#include "tests/support/ui/OffscreenEnvironment.h"
#include "tests/support/ui/Palettes.h"

namespace quorvi::test {
namespace {

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
