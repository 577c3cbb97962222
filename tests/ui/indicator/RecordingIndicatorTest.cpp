#include "Quorvi/ui/indicator/RecordingAppearanceSettings.h"
#include "Quorvi/ui/indicator/RecordingPanel.h"
#include "tests/ui/WindowTest.h"

namespace quorvi::test {
namespace {

TEST(RecordingHUD, BarsAndTimeFollowTheirRules) {
    for (std::size_t bar = 0; bar < LevelMeter::weights.size(); ++bar)
        EXPECT_EQ(LevelMeter::barHeight(bar, 0), 3);
    EXPECT_EQ(LevelMeter::barHeight(6, 7), 22) << "the level is clamped";
    EXPECT_EQ(LevelMeter::barHeight(0, 0.5), 6.5);
    EXPECT_EQ(RecordingHUD::elapsedText(7.9), QStringLiteral("0:07"));
    EXPECT_EQ(RecordingHUD::elapsedText(179.99), QStringLiteral("2:59"));
}

TEST(RecordingHUD, ShowsWhatBelongsToEachStage) {
    RecordingHUD hud;
    hud.show();
    const auto shown = [&](RecordingHUD::Values values) {
        hud.setValues(std::move(values));
        return Seen(hud).text();
    };
    const auto words = QStringLiteral("Words");
    EXPECT_EQ(shown({.stage = DictationStage::recording, .message = words, .elapsed = 65}),
              "Listening… | 1:05 | Words | Esc to cancel");
    EXPECT_EQ(shown({.stage = DictationStage::learned, .message = words}),
              "Correction saved | Words");
    EXPECT_EQ(hud.toolTip(), words);
    bool copied = false;
    EXPECT_EQ(shown({.stage = DictationStage::clipboard, .onCopy = [&] { copied = true; }}),
              "Ready to paste | [Copy transcript]");
    Seen(hud).press("Copy transcript");
    EXPECT_TRUE(copied);
    EXPECT_EQ(shown({.stage = DictationStage::recording,
                     .updateVersion = QStringLiteral("2.0"),
                     .onUpdate = [] {}}),
              "Listening… | 0:00 | Esc to cancel | [Update 2.0]");
    EXPECT_EQ(part<HudTime>(hud)->accessibleDescription(), QStringLiteral("0 seconds"));
}

TEST(RecordingHUD, OnlyGlassFollowsDarkAndAFailureIsWarmOnMidnight) {
    const auto theme = [](RecordingTheme which, bool dark) {
        return ThemePalette::of(which, desktopPalette(dark));
    };
    const auto failure = [&](RecordingTheme which) {
        return theme(which, false).stateAccent(DictationStage::failure).name();
    };
    EXPECT_EQ(failure(RecordingTheme::midnight), QColor::fromRgbF(1, 0.69F, 0.52F).name());
    EXPECT_EQ(failure(RecordingTheme::glass), failure(RecordingTheme::paper));
    EXPECT_NE(theme(RecordingTheme::glass, true).ink, theme(RecordingTheme::glass, false).ink);
    EXPECT_EQ(theme(RecordingTheme::paper, true).ink, theme(RecordingTheme::paper, false).ink);
}

TEST(RecordingHUD, NothingMovesWhileHidden) {
    RecordingHUD hud;
    auto* meter = part<LevelMeter>(hud);
    auto* sign = part<StageSign>(hud);
    const auto show = [&](DictationStage stage, double level) {
        hud.setValues({.stage = stage, .level = level});
    };
    show(DictationStage::recording, 0.2);
    EXPECT_FALSE(meter->isMoving());
    hud.show();
    show(DictationStage::recording, 1);
    EXPECT_TRUE(meter->isMoving());
    EXPECT_LT(meter->shownLevel(), 1);
    hud.hide();
    EXPECT_FALSE(meter->isMoving());
    hud.show();
    hud.setReducesMotion(true);
    show(DictationStage::recording, 0.5);
    EXPECT_FALSE(meter->isMoving());
    EXPECT_EQ(meter->shownLevel(), 0.5);
    show(DictationStage::inserting, 0);
    EXPECT_TRUE(sign->isSpinning());
    hud.hide();
    EXPECT_FALSE(sign->isSpinning());
}

// The indicator on the real controller.
class RecordingPanelFollows : public testing::Test {
protected:
    RecordingPanelFollows() {
        world.saveKey();
        world.offerUpdate("a package", "News");
        world.model.showOverlay = [this] { panel.present(); };
        world.model.hideOverlay = [this] { panel.hide(); };
    }
    ~RecordingPanelFollows() override {
        world.model.showOverlay = world.model.hideOverlay = [] {};
    }

    WindowWorld world;
    RecordingPanel panel{world.model, world.updater,
                         [] { return Surroundings{.isComposited = true}; }};
};

TEST_F(RecordingPanelFollows, TheDictationAndOffersItsWords) {
    world.beginDictation();
    world.scheduler.advance(1s);
    ASSERT_TRUE(panel.isVisible());
    EXPECT_TRUE(panel.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(Seen(panel).text(), "Listening… | 0:01 | Dictating into Text Editor | Esc to cancel");
    EXPECT_FALSE(panel.acceptsMouse());
    world.accessibility.focus(world.accessibility.makeText(WindowWorld::editor, "elsewhere"));
    world.model.finish();
    world.scheduler.advance(1s);
    EXPECT_TRUE(panel.acceptsMouse());
    EXPECT_TRUE(Seen(panel).has("[Copy transcript]")) << Seen(panel).text();
    world.model.resetDictation();
    world.scheduler.advance(1ms);
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(RecordingPanelFollows, AnUpdateIsOfferedOnlyWhileRecording) {
    world.scheduler.advance(24h);
    ASSERT_TRUE(world.updater.availableVersion());
    panel.present();
    EXPECT_FALSE(panel.acceptsMouse());
    EXPECT_FALSE(Seen(panel).has("Update"));
    world.beginDictation();
    world.scheduler.advance(1s);
    EXPECT_TRUE(panel.acceptsMouse());
    Seen(panel).press("Update 2.0");
    EXPECT_NE(world.updater.stage(), UpdateStage::idle);
    world.model.finish();
    world.scheduler.advance(1s);
    EXPECT_FALSE(Seen(panel).has("Update"));
    world.updater.close();
}

TEST(RecordingPanel, IsAboveTheBarsOfTheDesktop) {
    // A screen of 1920 × 1080 right of another, with a bar of 40 at its bottom.
    EXPECT_EQ(RecordingPanel::place({1920, 0, 1920, 1040}, {316, 92}),
              QRect(1920 + 802, 1040 - 28 - 92, 316, 92));
}

}  // namespace
}  // namespace quorvi::test
