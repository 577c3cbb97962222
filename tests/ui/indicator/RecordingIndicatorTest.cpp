#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>

#include "Quorvi/ui/indicator/RecordingAppearanceSettings.h"
#include "Quorvi/ui/indicator/RecordingOverlay.h"
#include "Quorvi/ui/indicator/RecordingPanel.h"
#include "tests/dictation/DictationFixture.h"
#include "tests/fakes/FakeDownloader.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/ui/OffscreenEnvironment.h"
#include "tests/support/ui/SeenTexts.h"

namespace quorvi::test {
namespace {

class RecordingHUDTest : public testing::Test {};

TEST_F(RecordingHUDTest, BarsAndTimeFollowTheirRules) {
    for (std::size_t bar = 0; bar < LevelMeter::weights.size(); ++bar)
        EXPECT_EQ(LevelMeter::barHeight(bar, 0), 3);
    EXPECT_EQ(LevelMeter::barHeight(6, 1), 22);
    EXPECT_EQ(LevelMeter::barHeight(6, 7), 22);
    EXPECT_EQ(LevelMeter::barHeight(0, 0.5), 6.5);
    EXPECT_EQ(RecordingHUD::elapsedText(7.9), QStringLiteral("0:07"));
    EXPECT_EQ(RecordingHUD::elapsedText(179.99), QStringLiteral("2:59"));
    EXPECT_EQ(RecordingHUD::panelSize(DictationStage::recording), QSize(316, 92));
}

TEST_F(RecordingHUDTest, ShowsWhatBelongsToEachStage) {
    RecordingHUD hud;
    hud.show();
    const auto shown = [&](DictationStage stage) {
        hud.setValues({.stage = stage, .message = QStringLiteral("Words"), .elapsed = 65});
        return seen(hud);
    };
    EXPECT_EQ(shown(DictationStage::recording), "Listening… | 1:05 | Words | Esc to cancel");
    EXPECT_EQ(shown(DictationStage::transcribing), "Transcribing… | Words");
    EXPECT_EQ(shown(DictationStage::learned), "Correction saved | Words");
    EXPECT_EQ(hud.toolTip(), QStringLiteral("Words"));
    for (const auto& [stage, two] : {std::pair(DictationStage::failure, true),
                                     {DictationStage::idle, true},
                                     {DictationStage::clipboard, true},
                                     {DictationStage::learned, true},
                                     {DictationStage::success, false},
                                     {DictationStage::recording, false},
                                     {DictationStage::inserting, false}})
        EXPECT_EQ(RecordingHUD::usesTwoLines(stage), two);

    bool copied = false;
    hud.setValues({.stage = DictationStage::clipboard, .onCopy = [&] { copied = true; }});
    EXPECT_EQ(seen(hud), "Ready to paste | [Copy transcript]");
    for (auto* button : hud.findChildren<QAbstractButton*>())
        if (button->isVisible()) button->click();
    EXPECT_TRUE(copied);
    hud.setValues({.stage = DictationStage::recording,
                   .updateVersion = QStringLiteral("2.0"),
                   .onUpdate = [] {}});
    EXPECT_EQ(seen(hud), "Listening… | 0:00 | Esc to cancel | [Update 2.0]");
    const auto* time = part<HudTime>(hud);
    EXPECT_EQ(time->accessibleName(), QStringLiteral("Recording time"));
    EXPECT_EQ(time->accessibleDescription(), QStringLiteral("0 seconds"));
}

TEST_F(RecordingHUDTest, FailureIsWarmOnMidnightAndOrangeElsewhere) {
    const auto accent = [](RecordingTheme theme, DictationStage stage, bool dark = false) {
        return ThemePalette::of(theme, desktopPalette(dark)).stateAccent(stage).name();
    };
    EXPECT_EQ(accent(RecordingTheme::midnight, DictationStage::failure),
              QColor::fromRgbF(1, 0.69F, 0.52F).name());
    EXPECT_EQ(accent(RecordingTheme::midnight, DictationStage::success),
              QColor::fromRgbF(0.47F, 0.93F, 0.76F).name());
    EXPECT_EQ(accent(RecordingTheme::glass, DictationStage::failure),
              accent(RecordingTheme::paper, DictationStage::failure));
    EXPECT_NE(ThemePalette::of(RecordingTheme::glass, desktopPalette(true)).ink,
              ThemePalette::of(RecordingTheme::glass, desktopPalette(false)).ink);
    EXPECT_EQ(ThemePalette::of(RecordingTheme::paper, desktopPalette(true)).ink,
              ThemePalette::of(RecordingTheme::paper, desktopPalette(false)).ink);
}

TEST_F(RecordingHUDTest, NothingMovesThatCannotBeSeen) {
    RecordingHUD hud;
    auto* meter = part<LevelMeter>(hud);
    auto* sign = part<StageSign>(hud);
    ASSERT_TRUE(meter && sign);
    RecordingHUD::Values values{.stage = DictationStage::recording, .level = 0.2};
    hud.setValues(values);
    EXPECT_FALSE(meter->isMoving());
    hud.show();
    values.level = 1;
    hud.setValues(values);
    EXPECT_TRUE(meter->isMoving());
    EXPECT_LT(meter->shownLevel(), 1);
    hud.hide();
    EXPECT_FALSE(meter->isMoving());
    hud.show();
    hud.setReducesMotion(true);
    values.level = 0.5;
    hud.setValues(values);
    EXPECT_FALSE(meter->isMoving());
    EXPECT_EQ(meter->shownLevel(), 0.5);
    values.stage = DictationStage::inserting;
    hud.setValues(values);
    EXPECT_TRUE(sign->isSpinning());
    hud.hide();
    EXPECT_FALSE(sign->isSpinning());
}

// The indicator on the real controller, which stands on fakes.
class RecordingOverlayTest : public DictationTest {
protected:
    void TearDown() override {
        model->showOverlay = model->hideOverlay = [] {};
    }

    void publishUpdate() {
        downloader.body =
            "<rss xmlns:s=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel><item>"
            "<enclosure url=\"https://a/q.deb\" s:version=\"2.0\" s:edSignature=\"x\" "
            "length=\"1\"/></item></channel></rss>";
        scheduler.advance(24h);
        ASSERT_TRUE(updater.availableVersion());
    }

    FakeDownloader downloader{scheduler};
    FakeUpdateInstaller installer;
    AppUpdater updater{{scheduler,
                        executor,
                        preferences,
                        downloader,
                        installer,
                        {"https://a/feed", "PUAXw+hDiVqStwqnTRt+vJyYLM8uxJaMwM1V8Sr0Zgw=", "1.0",
                         "12", "quorvi", folder.path() / "updates"}}};
};

TEST_F(RecordingOverlayTest, FollowsTheControllerAndOffersWhatCanBeDone) {
    RecordingPanel panel(*model, updater, [] { return Surroundings{.isComposited = true}; });
    model->showOverlay = [&] { panel.present(); };
    model->hideOverlay = [&] { panel.hide(); };
    EXPECT_FALSE(panel.isVisible());
    keyboard.press(f8);
    scheduler.advance(1s);
    ASSERT_TRUE(panel.isVisible());
    EXPECT_TRUE(panel.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(seen(panel), "Listening… | 0:01 | Dictating into Editor | Esc to cancel");
    EXPECT_FALSE(panel.acceptsMouse());

    // A field that is gone: the words are offered.
    accessibility.focus(accessibility.makeText(editor, "elsewhere"));
    keyboard.release(f8);
    scheduler.advance(1s);
    ASSERT_EQ(model->stage(), DictationStage::clipboard) << model->message();
    EXPECT_TRUE(panel.acceptsMouse());
    EXPECT_TRUE(seen(panel).starts_with("Ready to paste | [Copy transcript] | ")) << seen(panel);
    model->resetDictation();
    settle();
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(RecordingOverlayTest, UpdateIsOfferedOnlyWhileRecording) {
    RecordingPanel panel(*model, updater, [] { return Surroundings{.isComposited = true}; });
    publishUpdate();
    panel.present();
    EXPECT_FALSE(panel.acceptsMouse());
    EXPECT_EQ(seen(panel).find("Update"), std::string::npos) << seen(panel);
    keyboard.press(f8);
    scheduler.advance(1s);
    EXPECT_TRUE(panel.acceptsMouse());
    EXPECT_NE(seen(panel).find("[Update 2.0]"), std::string::npos) << seen(panel);
    for (auto* button : panel.findChildren<QAbstractButton*>())
        if (button->isVisible()) button->click();
    EXPECT_NE(updater.stage(), UpdateStage::idle);
    keyboard.release(f8);
    scheduler.advance(1s);
    EXPECT_EQ(seen(panel).find("Update"), std::string::npos) << seen(panel);
    updater.close();
}

TEST_F(RecordingOverlayTest, LiesAboveTheBarsOfTheDesktop) {
    // A screen of 1920 × 1080 right of another, with a bar of 40 at its bottom.
    const auto place = RecordingPanel::place({1920, 0, 1920, 1040}, {316, 92});
    EXPECT_EQ(place, QRect(1920 + 802, 1040 - 28 - 92, 316, 92));
}

TEST_F(RecordingOverlayTest, StyleIsChosenWithAPreview) {
    RecordingAppearanceSettings settings(*model);
    settings.show();
    auto* style = settings.findChild<QComboBox*>();
    EXPECT_EQ(style->accessibleName(), QStringLiteral("Style"));
    EXPECT_EQ(style->currentText(), QStringLiteral("Glass"));
    style->setCurrentIndex(2);
    EXPECT_EQ(model->recordingTheme(), RecordingTheme::paper);
    const auto text = seen(settings);
    EXPECT_NE(text.find("Warm ivory, ink lettering, and terracotta accents."), text.npos) << text;
    EXPECT_NE(text.find("Preview · microphone off"), text.npos) << text;
    model->setRecordingTheme(RecordingTheme::midnight);
    EXPECT_EQ(style->currentText(), QStringLiteral("Midnight"));
}

}  // namespace
}  // namespace quorvi::test
