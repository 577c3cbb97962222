#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/json/Base64.h"
#include "tests/support/cloud/SyncedProgram.h"

namespace quorvi::test {

// A user's change of one value.
struct SyncEdit {
    enum class Kind { dictated, deleted, redacted, wrote };
    Kind kind;
    std::string id;
    std::string value;  // the new value in the form of syncedValue()
    // The version in the ledger.
    std::int64_t revision = 0;
    std::string device;
};

// Any bytes as one word of a line, and back.
inline std::string asWord(std::string_view bytes) {
    std::string word = "=";
    json::appendBase64(word, bytes);
    return word;
}
inline std::string fromWord(std::string_view word) {
    return json::bytesOfBase64(word.substr(1)).value().string();
}

// Returns the part of a payload that the user has written, without dates and the like; of a rule
// the phrase, '>' and the replacement.
inline std::string syncedValue(const std::string& id, const std::string& payload) {
    if (id.starts_with(syncPrefix::history)) {
        const auto record = decodeRecord(payload);
        return record.text ? record.text->string() : "-";
    }
    if (!id.starts_with(syncPrefix::correction)) return payload;
    const auto rule = decodeCorrection(payload).value();
    return rule.original + ">" + rule.replacement + (rule.isEnabled ? "+" : "-");
}

// A user who makes random changes of synchronised values. `tried` gets an edit that may overwrite
// something before it is made, since the program may be killed before it can report it.
class SyncEditor {
public:
    using Tried = std::function<void(const SyncEdit&)>;

    SyncEditor(SyncedProgram& program, Scheduler& clock, std::uint64_t seed, Tried tried)
        : program_(program), clock_(clock), random_(seed), tried_(std::move(tried)) {}

    // Makes a change, and returns its edits.
    std::vector<SyncEdit> edit() {
        auto& history = *program_.history;
        auto& corrections = *program_.corrections;
        auto& model = *program_.model;
        const auto& rules = corrections.rules().rules();
        if (history.isLoading() || corrections.persistenceError()) return {};
        switch (below(14)) {
            case 0: {
                if (history.records().empty()) break;
                const auto id = history.records()[below(history.records().size())].id;
                make({Kind::deleted, historyId(id), {}}, [&] { history.remove(id); });
                break;
            }
            case 1:
            case 2:
                save({.original = below(2) ? letter() : word(), .replacement = word()});
                break;
            case 3: {
                if (rules.empty()) break;
                const auto id = rules[below(rules.size())].id;
                make({Kind::deleted, ruleId(id), {}}, [&] { corrections.remove(id); });
                break;
            }
            case 4: {
                if (rules.empty()) break;
                auto rule = rules[below(rules.size())];
                rule.isEnabled = !rule.isEnabled;
                rule.replacement = word();
                save(rule);
                break;
            }
            case 5:
            case 6: {
                const auto text = word();
                set("vocabulary", text, [&] { model.setVocabulary(text); });
                break;
            }
            case 7: {
                const bool keeps = below(2);
                set("keepTranscripts", keeps, [&] { history.setKeepTranscripts(keeps); });
                break;
            }
            case 8:
                setRetention();
                break;
            default:
                dictate();
        }
        return std::move(edits_);
    }

private:
    using Kind = SyncEdit::Kind;

    static std::string historyId(const Uuid& id) { return LocalSnapshot::historyId(id).string(); }
    static std::string ruleId(const std::string& id) {
        return std::string(syncPrefix::correction) + id;
    }

    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    std::string letter() { return std::string(1, static_cast<char>('a' + below(6))); }
    // Returns a word that is used only once.
    std::string word() { return letter() + std::to_string(random_()); }

    void make(SyncEdit edit, const auto& change) {
        tried_(edit);
        change();
        edits_.push_back(std::move(edit));
    }
    void dictate() {
        auto& history = *program_.history;
        const auto daysAgo = static_cast<double>(below(3) * 50);
        history.record("words " + word(), 2, "Editor", "el",
                       DictationCostEstimate::of(TranscriptionModel::transcribe),
                       {clock_.date().secondsSinceReferenceDate - daysAgo * 86400});
        const auto& record = history.records()[0];
        // Retention may drop an old text at any time.
        const bool stays = record.text && daysAgo == 0;
        edits_.push_back(
            {Kind::dictated, historyId(record.id), stays ? record.text->string() : ""});
    }
    void save(const TextCorrection& rule) {
        const auto id = ruleId(rule.id);
        make({Kind::wrote, id, syncedValue(id, encodeCorrection(rule))}, [&] {
            try {
                program_.corrections->save(rule);
            } catch (const QuorviError&) {  // the phrase is taken
            }
        });
    }
    void set(const std::string& key, const SettingValue& value, const auto& change) {
        const auto id = std::string(syncPrefix::setting) + key;
        make({Kind::wrote, id, LocalSnapshot::encode(value).string()}, change);
    }
    void setRetention() {
        auto& history = *program_.history;
        constexpr TranscriptRetention all[] = {TranscriptRetention::thirtyDays,
                                               TranscriptRetention::ninetyDays,
                                               TranscriptRetention::forever};
        const auto chosen = all[below(3)];
        std::set<std::string> redacted;
        for (const auto& record : history.records())
            if (record.text) redacted.insert(historyId(record.id));
        set("transcriptRetention", std::int64_t{rawValue(chosen)},
            [&] { history.setRetention(chosen); });
        for (const auto& record : history.records())
            if (record.text) redacted.erase(historyId(record.id));
        for (const auto& id : redacted) edits_.push_back({Kind::redacted, id, {}});
    }

    SyncedProgram& program_;
    Scheduler& clock_;
    std::mt19937_64 random_;
    Tried tried_;
    std::vector<SyncEdit> edits_;
};

// The edits of one program that its ledger has not recorded yet.
class WaitingEdits {
public:
    // To be called before the ledger can record the edit.
    void add(SyncEdit edit, const SyncedProgram& program) {
        // An earlier edit that was not recorded yet is superseded.
        std::erase_if(edits_, [&](const SyncEdit& other) { return other.id == edit.id; });
        const auto* archive = program.sync->archive();
        const auto* item = archive ? archive->ledger().item(edit.id) : nullptr;
        edit.revision = item ? item->revision : 0;
        edits_.push_back(std::move(edit));
    }
    void clear() { edits_.clear(); }

    // Returns the edits that the ledger has recorded since the last call, with their stamps.
    std::vector<SyncEdit> takenIn(const SyncedProgram& program) {
        std::vector<SyncEdit> all;
        if (!program.isRunning() || !program.sync->archive()) return all;
        const auto& ledger = program.sync->archive()->ledger();
        std::erase_if(edits_, [&](SyncEdit& edit) {
            const auto* item = ledger.item(edit.id);
            if (!item || !isIn(edit, *item, ledger.device())) return false;
            edit.revision = item->revision;
            edit.device = item->device.string();
            all.push_back(edit);
            return true;
        });
        return all;
    }

private:
    static bool isIn(const SyncEdit& edit, const SyncItem& item, const SharedString& device) {
        using Kind = SyncEdit::Kind;
        switch (edit.kind) {
            case Kind::dictated:
                return true;
            case Kind::deleted:
                return item.deleted();
            case Kind::redacted:
                return item.redacted || item.deleted();
            case Kind::wrote:
                // Another machine may have written the same value.
                return item.payload && item.device == device && item.revision > edit.revision &&
                       syncedValue(edit.id, item.payload->string()) == edit.value;
        }
        return false;
    }

    std::vector<SyncEdit> edits_;
};

// Knows the edits of all users and which of them were acknowledged, and checks that none is lost.
class SyncJudge {
public:
    // An edit that may have been made or not.
    void wasTried(const SyncEdit& edit) {
        if (edit.kind == SyncEdit::Kind::wrote) tried_[edit.id].insert(edit.value);
        if (edit.kind == SyncEdit::Kind::deleted) mayBeGone_.insert(edit.id);
    }
    // An edit that is in the ledger and on the disk.
    void wasKept(const SyncEdit& edit) {
        ++kept_;
        // The values of a first launch are older than any other.
        if (edit.kind == SyncEdit::Kind::wrote && edit.revision == 1) return;
        switch (edit.kind) {
            case SyncEdit::Kind::dictated:
                dictated_[edit.id] = edit.value;
                break;
            case SyncEdit::Kind::deleted:
                gone_.insert(edit.id);
                break;
            case SyncEdit::Kind::redacted:
                redacted_.insert(edit.id);
                break;
            case SyncEdit::Kind::wrote:
                written_[edit.id].push_back(edit);
                break;
        }
    }
    std::size_t keptCount() const { return kept_; }

    // Checks the values that all machines hold at the end.
    void check(const std::map<std::string, std::string>& values) const {
        for (const auto& [id, text] : dictated_) {
            const auto found = values.find(id);
            if (found == values.end()) {
                EXPECT_TRUE(mayBeGone_.contains(id)) << id << " is lost";
            } else if (!text.empty()) {
                EXPECT_EQ(syncedValue(id, found->second), text) << id;
            }
        }
        for (const auto& id : gone_) EXPECT_FALSE(values.contains(id)) << id << " is back";
        for (const auto& id : redacted_)
            if (const auto found = values.find(id); found != values.end()) {
                EXPECT_EQ(syncedValue(id, found->second), "-") << "the text of " << id;
            }
        for (const auto& [id, edits] : written_) {
            const auto found = values.find(id);
            if (found == values.end()) {
                EXPECT_TRUE(mayBeGone_.contains(id) || hasRival(id)) << id << " is lost";
                continue;
            }
            const auto value = syncedValue(id, found->second);
            EXPECT_TRUE(mayBe(id, edits, value))
                << id << " is " << testing::PrintToString(value) << " and not "
                << testing::PrintToString(latest(edits).value) << " of " << latest(edits).revision
                << " by " << latest(edits).device;
        }
    }

private:
    static const SyncEdit& latest(const std::vector<SyncEdit>& edits) {
        return *std::ranges::max_element(
            edits, {}, [](const SyncEdit& edit) { return std::tie(edit.revision, edit.device); });
    }
    // Whether it is the latest acknowledged value, or one that was written at an unknown time.
    bool mayBe(const std::string& id, const std::vector<SyncEdit>& edits,
               const std::string& value) const {
        if (value == latest(edits).value) return true;
        const auto tried = tried_.find(id);
        return tried != tried_.end() &&
               std::cmp_greater(tried->second.count(value),
                                std::ranges::count(edits, value, &SyncEdit::value));
    }
    // Of several rules for one phrase one stays. Every machine starts with some rules of its own.
    bool hasRival(const std::string& id) const {
        const auto phraseOf = [](const std::string& value) {
            return value.substr(0, value.find('>'));
        };
        std::set<std::string> own;
        for (const auto& value : tried_.at(id)) own.insert(phraseOf(value));
        for (const auto& phrase : own)
            if (phrase.size() > 1 && phrase.find_first_of("0123456789") == phrase.npos) return true;
        for (const auto& [other, values] : tried_)
            if (other != id)
                for (const auto& value : values)
                    if (own.contains(phraseOf(value))) return true;
        return false;
    }

    std::map<std::string, std::string> dictated_;  // with the text if it must stay
    std::set<std::string> gone_, mayBeGone_, redacted_;
    std::map<std::string, std::vector<SyncEdit>> written_;
    std::map<std::string, std::multiset<std::string>> tried_;
    std::size_t kept_ = 0;
};

}  // namespace quorvi::test
