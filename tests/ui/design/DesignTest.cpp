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
    const auto copied = [&](int begin, qsizetype length) {
        label->setSelection(begin, static_cast<int>(length));
        QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
        QCoreApplication::sendEvent(label.get(), &copy);
        return QGuiApplication::clipboard()->text();
    };
    EXPECT_EQ(copied(0, label->text().size()), word);
    const auto lines = QStringLiteral("one\r\ntwo and more");
    setContent(*label, lines, 12);
    EXPECT_EQ(label->text(), QStringLiteral("one\ntwo and …"));
    EXPECT_EQ(copied(4, 3), QStringLiteral("two"));
    EXPECT_EQ(copied(4, 9), QStringLiteral("two and"));
    EXPECT_EQ(copied(0, label->text().size()), lines) << "all that is shown stands for the whole";

    const QString long300(300'000, QLatin1Char('w'));
    setContent(*label, long300);
    EXPECT_LT(label->text().size(), 4'300);
    EXPECT_EQ(copied(0, label->text().size()), long300);
    setContent(*label, QStringLiteral("a") + QString(10'000, QChar(0x301)) + QStringLiteral("b"));
    EXPECT_LT(label->text().size(), 100);
    EXPECT_TRUE(label->text().endsWith(QLatin1Char('b')));
}

}  // namespace
}  // namespace quorvi::test
