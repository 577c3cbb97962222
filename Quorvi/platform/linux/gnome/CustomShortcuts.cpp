#include "Quorvi/platform/linux/gnome/CustomShortcuts.h"

#include <algorithm>
#include <utility>

#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/gnome/CustomShortcutSettings.h"
#include "Quorvi/platform/linux/shortcuts/CommandAddress.h"
#include "Quorvi/platform/linux/shortcuts/CommandSocket.h"
#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {
namespace {

using Entry = CustomShortcutSettings::Entry;

constexpr SwallowedKey escape{keyCode::escape, 0};

std::optional<SwallowedKey> dictationKey(const std::vector<SwallowedKey>& keys) {
    const auto found =
        std::ranges::find_if(keys, [](const SwallowedKey& key) { return key != escape; });
    return found == keys.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

struct CustomShortcuts::Answer {
    bool isListed = false;
    bool isBound = false;
    std::string takenBy;
    GnomeKeyRepeat repeat;
};

// The thread that reads and writes the settings and hears the helper.
class CustomShortcuts::Watcher {
public:
    Watcher(std::function<void(const std::string&)> heard, std::function<void(Answer)> answered)
        : heard_(std::move(heard)), answered_(std::move(answered)) {}

    void bind(std::vector<SwallowedKey> keys) {
        thread_.invoke([this, keys = std::move(keys)] {
            keys_ = keys;
            apply();
        });
    }

    void setListed(bool listed, const std::string& helper, const std::string& program) {
        thread_.invoke([this, listed, helper, program] {
            if (listed)
                settings_->install(helper, program);
            else
                settings_->remove();
            apply();
        });
    }

private:
    void begin() {
        socket_.emplace(heard_);
        settings_.emplace();
        settings_->onChange([this] {
            taken_.reset();
            apply();
        });
    }

    void end() {
        for (const auto entry : {Entry::dictate, Entry::cancel})
            settings_->bind(entry, std::nullopt);
        settings_.reset();
        socket_.reset();
    }

    void apply() {
        auto key = dictationKey(keys_);
        Answer answer{.isListed = settings_->isInstalled(), .repeat = settings_->repeat()};
        answer.isBound = answer.isListed;
        if (key && answer.isListed) {
            answer.takenBy = takenBy(*key);
            answer.isBound = answer.takenBy.empty() && !changesFlags(key->keyCode);
            if (!answer.isBound) key.reset();
        }
        settings_->bind(Entry::dictate, key);
        settings_->bind(Entry::cancel, std::ranges::find(keys_, escape) != keys_.end()
                                           ? std::optional(escape)
                                           : std::nullopt);
        answered_(std::move(answer));
    }

    // Remembered, since Escape comes and goes with each dictation.
    const std::string& takenBy(const SwallowedKey& key) {
        if (!taken_ || taken_->first != key) taken_.emplace(key, settings_->takenBy(key));
        return taken_->second;
    }

    const std::function<void(const std::string&)> heard_;
    const std::function<void(Answer)> answered_;
    std::optional<CommandSocket> socket_;
    std::optional<CustomShortcutSettings> settings_;
    std::vector<SwallowedKey> keys_;
    std::optional<std::pair<SwallowedKey, std::string>> taken_;
    GLibThread thread_{"shortcuts", [this] { begin(); }, [this] { end(); }};
};

CustomShortcuts::CustomShortcuts(Scheduler& scheduler, std::string helper, std::string program)
    : scheduler_(scheduler),
      helper_(std::move(helper)),
      program_(std::move(program)),
      presses_(scheduler, KeyRepeats::Timing::unknown(), [this](KeyRepeats::Change change) {
          if (!key_) return;
          changed_(*key_, change == KeyRepeats::Change::pressed    ? Change::pressed
                          : change == KeyRepeats::Change::released ? Change::released
                                                                   : Change::tapped);
      }) {}

CustomShortcuts::~CustomShortcuts() = default;

ShortcutSource::Support CustomShortcuts::support() const {
    return {.release = repeats_, .loneModifiers = false, .escape = true, .needsListing = true};
}

void CustomShortcuts::start(std::function<void(const SwallowedKey&, Change)> changed,
                            std::function<void()> boundChanged) {
    changed_ = std::move(changed);
    boundChanged_ = std::move(boundChanged);
    watcher_ = std::make_unique<Watcher>(
        [&scheduler = scheduler_, hear = lifetime_.guard([this](const std::string& word) {
            heard(word);
        })](const std::string& word) { scheduler.post([hear, word] { hear(word); }); },
        [&scheduler = scheduler_, take = lifetime_.guard([this](const Answer& answer) {
            answered(answer);
        })](Answer answer) {
            scheduler.post([take, answer = std::move(answer)] { take(answer); });
        });
}

void CustomShortcuts::bind(std::vector<SwallowedKey> keys) {
    if (!watcher_ || (keys == keys_ && isBound_)) return;
    keys_ = std::move(keys);
    if (const auto key = dictationKey(keys_); key != key_) {
        presses_.release();
        key_ = key;
    }
    watcher_->bind(keys_);
}

void CustomShortcuts::setListed(bool listed) {
    if (watcher_) watcher_->setListed(listed, helper_, program_);
}

void CustomShortcuts::heard(const std::string& word) {
    if (word == dictateWord && key_) presses_.note();
    if (word != cancelWord || std::ranges::find(keys_, escape) == keys_.end()) return;
    changed_(escape, Change::pressed);
    changed_(escape, Change::released);
}

void CustomShortcuts::answered(const Answer& answer) {
    presses_.setTiming(answer.repeat.timing);
    const bool isChanged = answer.isBound != isBound_ || answer.isListed != isListed_ ||
                           answer.takenBy != takenBy_ || answer.repeat.isOn != repeats_;
    isBound_ = answer.isBound;
    isListed_ = answer.isListed;
    takenBy_ = answer.takenBy;
    repeats_ = answer.repeat.isOn;
    if (isChanged) boundChanged_();
}

}  // namespace quorvi
