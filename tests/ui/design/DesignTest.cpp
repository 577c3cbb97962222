#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <memory>

#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Texts.h"
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

TEST(Texts, AreCopiedAsTheyAreAndShownAsFarAsTheyCanBeLaidOut) {
    const auto word = QString(60, QLatin1Char('w'));
    const std::unique_ptr<QLabel> label(contentText(word));
    ASSERT_NE(label->text(), word) << "it may break";
    label->setSelection(0, static_cast<int>(label->text().size()));
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QCoreApplication::sendEvent(label.get(), &copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), word);

    setContent(*label, QString(300'000, QLatin1Char('w')));
    EXPECT_LT(label->text().size(), 10'100);
    setContent(*label, QStringLiteral("a") + QString(10'000, QChar(0x301)) + QStringLiteral("b"));
    EXPECT_LT(label->text().size(), 100);
    EXPECT_TRUE(label->text().endsWith(QLatin1Char('b')));
}

}  // namespace
}  // namespace quorvi::test
