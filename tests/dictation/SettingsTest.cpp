#include "QuorviCore/text/Text.h"
#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

using Settings = AppModel::SyncSettings;

Bytes asBytes(std::string_view text) {
    return {text.begin(), text.end()};
}
PreferenceValue text(std::string value) {
    return value;
}

const Settings chosen{
    {"recordingTheme", text("midnight")},
    {"startSoundStyle", text("chime")},
    {"stopSoundStyle", text("silent")},
    {"soundCuesEnabled", false},
    {"mode", text("toggle")},
    {"model", text("gpt-4o-mini-transcribe")},
    {"vocabulary", text("Quorvi, Ωμέγα")},
    {"hotkey", asBytes(R"({"keyCode":44,"label":"⌃/","modifiers":262144})")},
    {"learnCorrectionsAutomatically", false},
    {"keepTranscripts", false},
    {"transcriptRetention", std::int64_t{30}},
};

using SettingsTest = DictationTest;

TEST_F(SettingsTest, TravelWholeAndComeBackAsTheSameBytes) {
    model->applySyncSettings(chosen);
    EXPECT_EQ(model->syncSettings(), chosen);
    EXPECT_EQ(model->shortcut(), (Hotkey{44, 262144, "⌃/"}));
    // They are kept as the user's own changes are: a new controller has them.
    const auto stored = preferences.bytes("hotkey").value_or(Bytes{});
    EXPECT_EQ(Hotkey::fromJson(std::string(stored.begin(), stored.end())), model->shortcut());
    makeModel();
    model->setShortcut({44, 262144, "⌃/"});
    EXPECT_EQ(model->syncSettings(), chosen);
    model->setShortcut(Hotkey::rightOption);
    EXPECT_EQ(model->syncSettings().at("hotkey"),
              PreferenceValue(asBytes(R"({"keyCode":61,"label":"Right ⌥","modifiers":0})")));
}

TEST_F(SettingsTest, FallBackWhenTheyAreBroken) {
    preferences.setString("mode", "shout");
    preferences.setString("model", "GPT-TRANSCRIBE");
    preferences.setString("soundCuesEnabled", "yes");
    preferences.setString("language", "greek");
    makeModel();
    EXPECT_EQ(model->mode(), DictationMode::hold);
    EXPECT_EQ(model->transcriptionModel(), TranscriptionModel::transcribe);
    EXPECT_TRUE(model->soundCuesEnabled());
    EXPECT_FALSE(preferences.contains("language"));
}

TEST_F(SettingsTest, ThatAreThereAlreadyOrMakeNoSenseChangeNothing) {
    model->applySyncSettings(chosen);
    int told = 0;
    const auto stored = preferences.onChange([&] { ++told; });
    const auto shown = model->onChange([&] { ++told; });
    model->applySyncSettings(model->syncSettings());
    model->applySyncSettings({});
    const std::vector<Settings> senseless{
        {{"recordingTheme", text("neon")}, {"startSoundStyle", text("")}, {"unknown", true}},
        {{"model", text("gpt-5")}, {"mode", text("HOLD")}, {"stopSoundStyle", text("Soft")}},
        {{"soundCuesEnabled", std::int64_t{1}}, {"vocabulary", asBytes("words")}},
        {{"hotkey", asBytes(R"({"keyCode":70000,"label":"","modifiers":0})")}, {"mode", true}},
        {{"transcriptRetention", std::int64_t{7}}, {"keepTranscripts", std::int64_t{1}}},
        {{"hotkey", text(R"({"keyCode":61,"label":"Right ⌥","modifiers":0})")}},
    };
    for (const auto& settings : senseless) model->applySyncSettings(settings);
    EXPECT_EQ(model->syncSettings(), chosen);
    EXPECT_EQ(told, 0);
}

TEST_F(SettingsTest, TakeOnlySoMuchVocabularyAsIsUsed) {
    const std::string family = "👨‍👩‍👧";  // one character as the user sees it
    std::string longText;
    for (int i = 0; i < 1500; ++i) longText += family;
    model->applySyncSettings({{"vocabulary", longText}});
    EXPECT_EQ(text::characterCount(model->vocabulary()), 1200U);
    EXPECT_EQ(model->vocabulary(), longText.substr(0, 1200 * family.size()));
    EXPECT_EQ(preferences.string("vocabulary"), model->vocabulary());
}

TEST_F(SettingsTest, LeaveOutAShortcutThatCannotBeEncoded) {
    model->setShortcut({100, 0, "F8\xFF"});
    EXPECT_FALSE(model->syncSettings().contains("hotkey"));
    EXPECT_EQ(model->syncSettings().size(), chosen.size() - 1);
}

}  // namespace
}  // namespace quorvi::test
