#include "Quorvi/settings/Settings.h"

#include <gtest/gtest.h>

#include "Quorvi/system/MemoryPreferences.h"
#include "tests/support/Texts.h"

namespace quorvi::test {
namespace {

using namespace std::string_literals;

// What a setting takes besides its default, and what it refuses.
struct Row {
    const AnySetting& setting;
    SettingValue other;
    std::vector<SettingValue> refused;
};

std::vector<Row> rows() {
    const auto text = [](const char* words) { return SettingValue(std::string(words)); };
    const SettingValue one = std::int64_t{1};
    return {
        {setting::recordingTheme, text("midnight"), {text("neon"), text(""), true}},
        {setting::startSoundStyle, text("chime"), {text("Soft"), one}},
        {setting::stopSoundStyle, text("silent"), {text("loud")}},
        {setting::soundCuesEnabled, false, {text("yes"), one}},
        {setting::mode, text("toggle"), {text("HOLD"), bytesOf("hold")}},
        {setting::model, text("gpt-4o-mini-transcribe"), {text("gpt-5")}},
        {setting::vocabulary, text("Quorvi, Ωμέγα"), {bytesOf("words")}},
        {setting::hotkey,
         bytesOf(R"({"keyCode":44,"label":"⌃/","modifiers":262144})"),
         {text(R"({"keyCode":61,"label":"Right ⌥","modifiers":0})"),
          bytesOf(R"({"keyCode":70000,"label":"","modifiers":0})")}},
        {setting::learnCorrectionsAutomatically, false, {one}},
        {setting::keepFailedRecording, false, {one}},
        {setting::keepTranscripts, false, {one}},
        {setting::transcriptRetention, std::int64_t{30}, {std::int64_t{7}, text("30")}},
    };
}

class SettingsTest : public testing::Test {
protected:
    static SettingValues others() {
        SettingValues values;
        for (const auto& row : rows()) values.emplace(row.setting.key(), row.other);
        return values;
    }

    MemoryPreferences preferences;
    Settings settings{preferences};
};

TEST_F(SettingsTest, FallBackToTheirDefaults) {
    const auto defaults = settings.travelling();
    std::size_t count = 0;
    for (const auto* each : allSettings) {
        EXPECT_EQ(each->accepted(each->defaultValue()), each->defaultValue()) << each->key();
        if (each->scope() == SettingScope::user) ++count;
    }
    EXPECT_EQ(count, rows().size()) << "a setting that travels has no row";
    EXPECT_EQ(defaults.size(), count);
    for (const auto& row : rows()) {
        EXPECT_EQ(defaults.at(std::string(row.setting.key())), row.setting.defaultValue());
        for (const auto& value : row.refused) preferences.set(row.setting.key(), value);
        EXPECT_EQ(settings.travelling(), defaults) << row.setting.key();
    }
    EXPECT_EQ(settings.get(setting::mode), DictationMode::hold);
}

TEST_F(SettingsTest, TravelAndIgnoreInvalidValues) {
    settings.apply(others());
    EXPECT_EQ(settings.travelling(), others());
    EXPECT_EQ(settings.get(setting::hotkey), (Hotkey{44, 262144, "⌃/"}));
    EXPECT_EQ(settings.get(setting::transcriptRetention), TranscriptRetention::thirtyDays);

    const auto silent = preferences.onChange([] { ADD_FAILURE() << "nothing has changed"; });
    settings.apply(others());
    settings.apply({{"unknown", true}, {"cloudDatabase", "folder:/elsewhere"s}});
    for (const auto& row : rows())
        for (const auto& value : row.refused)
            settings.apply({{std::string(row.setting.key()), value}});
    settings.set(setting::hotkey, {100, 0, "F8\xFF"});
}

TEST_F(SettingsTest, AShortcutTravelsAsTheSameBytesHoweverItIsStored) {
    preferences.set("hotkey", bytesOf(R"({ "label": "⌃/", "modifiers": 262144, "keyCode": 44 })"));
    EXPECT_EQ(settings.travelling().at("hotkey"), others().at("hotkey"));
}

TEST_F(SettingsTest, LimitTheVocabulary) {
    const std::string family = "👨‍👩‍👧";  // one character as the user sees it
    const auto longText = repeated(family, 1500);
    settings.apply({{"vocabulary", longText}});
    EXPECT_EQ(settings.get(setting::vocabulary), longText.substr(0, 1200 * family.size()));
    EXPECT_EQ(preferences.string("vocabulary"), settings.get(setting::vocabulary));
}

TEST_F(SettingsTest, TellTheirObserversOnly) {
    std::string told;
    const auto mode = settings.onChange({&setting::mode, &setting::hotkey}, [&] { told += "m"; });
    const auto theme = settings.onChange({&setting::recordingTheme}, [&] { told += "t"; });
    settings.set(setting::mode, DictationMode::hold);
    settings.set(setting::vocabulary, "words");
    EXPECT_EQ(told, "");
    Settings(preferences).set(setting::mode, DictationMode::toggle);
    settings.set(setting::recordingTheme, RecordingTheme::paper);
    settings.reset(setting::mode);
    EXPECT_EQ(told, "mtm");
}

TEST_F(SettingsTest, KeepADefaultThatIsChosenWhenTheUsersChoiceIsUnknown) {
    preferences.setCouldBeRead(false);
    settings.set(setting::transcriptRetention, TranscriptRetention::ninetyDays);
    EXPECT_EQ(preferences.integer("transcriptRetention"), 90);
}

}  // namespace
}  // namespace quorvi::test
