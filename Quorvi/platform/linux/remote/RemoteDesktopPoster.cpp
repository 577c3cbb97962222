#include "Quorvi/platform/linux/remote/RemoteDesktopPoster.h"

#include <chrono>
#include <optional>
#include <ranges>
#include <string>
#include <utility>
#include <vector>

#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/remote/KeptKeyConsent.h"
#include "Quorvi/platform/linux/remote/MutterKeyboard.h"
#include "Quorvi/platform/linux/remote/PortalKeyboard.h"
#include "Quorvi/platform/linux/wayland/input/SeatKeymap.h"
#include "Quorvi/platform/linux/xkb/KeymapText.h"
#include "QuorviCore/async/Future.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

// Without gaps a program that asks an input method about each key takes a letter for typed before
// it knows of its modifier.
constexpr Duration gap = 10ms;
constexpr Duration openingLimit = 2s;
constexpr Duration sessionLimit = 5s;     // until something is posted
constexpr Duration postingLimit = 500ms;  // later the text is on the clipboard for the user

struct Step {
    std::uint32_t key;
    bool isDown;
};

std::vector<Step> stepsOf(const ChordKeys& keys) {
    std::vector<Step> steps;
    for (const auto key : keys.modifiers) steps.push_back({key, true});
    steps.push_back({keys.key, true});
    steps.push_back({keys.key, false});
    for (const auto key : std::views::reverse(keys.modifiers)) steps.push_back({key, false});
    return steps;
}

}  // namespace

// The thread that talks to the desktop and to the disk. A session belongs to an attempt: what comes
// later from an earlier one is passed over.
class RemoteDesktopPoster::Worker {
public:
    // `told` is called on this thread.
    Worker(std::function<Way()> findWay, std::filesystem::path file,
           std::function<void(State)> told)
        : findWay_(std::move(findWay)), file_(std::move(file)), told_(std::move(told)) {}

    void setWanted(bool wanted) {
        thread_.invoke([this, wanted] {
            close();
            if (!wanted) {
                consent_->forget();
                return told_(State::off);
            }
            if (way_ == Way::mutter) return told_(consent_->keep({}) ? State::on : State::refused);
            told_(State::asking);
            connect({}, [this](bool isOpen) {
                told_(isOpen && consent_->token() ? State::on : State::refused);
                closeAfter(Duration::zero());
            });
        });
    }

    // `opened` is told on this thread whether keys can be pressed.
    void open(std::function<void(bool)> opened) {
        thread_.invoke([this, opened = std::move(opened)] {
            close();
            const auto token = consent_->token();
            if (!isStillGiven(token)) return opened(false);
            connect(*token, opened);
            after(openingLimit, [this] { giveUpOpening(); });
            closeAfter(sessionLimit);
            readLayout();
        });
    }

    void press(const ChordKeys& keys) {
        thread_.invoke([this, keys] {
            if (!isOpen_) return;
            ++attempt_;
            closeAfter(postingLimit);
            send(stepsOf(keys.placedIn(layout_)), 0);
        });
    }

private:
    void begin() {
        way_ = findWay_();
        consent_.emplace(file_, way_ == Way::portal);
        told_(consent_->token() ? State::on : State::off);
    }

    // The user may have taken it back in the desktop's settings.
    bool isStillGiven(const std::optional<std::string>& token) {
        if (token && way_ == Way::mutter) return true;
        const auto isRemembered = token ? KeptKeyConsent::isRemembered(*token) : false;
        if (isRemembered == false) {
            consent_->forget();
            told_(State::refused);
        }
        return isRemembered.value_or(false);
    }

    // Probably the desktop is asking the user, which ends with the session. So it would the next
    // time.
    void giveUpOpening() {
        if (isOpen_) return;
        told_(State::refused);
        close();
    }

    void readLayout() {
        WaylandConnection connection;
        layout_ = KeymapText(seatKeymap(connection));
    }

    void connect(const std::string& token, std::function<void(bool)> answered) {
        answered_ = std::move(answered);
        RemoteKeyboard::Sinks sinks{[this](const std::string& renewed) { opened(renewed); },
                                    [this] { lost(); }};
        if (way_ == Way::portal)
            keyboard_ = std::make_unique<PortalKeyboard>(token, std::move(sinks));
        else
            keyboard_ = std::make_unique<MutterKeyboard>(std::move(sinks));
    }

    void opened(const std::string& token) {
        isOpen_ = true;
        if (way_ == Way::portal && token != consent_->token()) consent_->keep(token);
        answer(true);
    }

    void lost() {
        isOpen_ = false;
        answer(false);
        closeAfter(Duration::zero());
    }

    void answer(bool isOpen) {
        if (const auto told = std::exchange(answered_, nullptr)) told(isOpen);
    }

    void send(std::vector<Step> steps, std::size_t at) {
        if (at == steps.size()) return close();
        const auto [key, isDown] = steps[at];
        keyboard_->send(key, isDown, [this, steps = std::move(steps), at] {
            after(gap, [this, steps, at] { send(steps, at + 1); });
        });
    }

    // Never inside a call of the keyboard's.
    void close() {
        ++attempt_;
        isOpen_ = false;
        answer(false);
        keyboard_.reset();
    }
    void closeAfter(Duration delay) {
        after(delay, [this] { close(); });
    }
    // Unless the attempt has ended by then.
    void after(Duration delay, std::function<void()> work) {
        thread_.invoke(
            [this, work = std::move(work), attempt = attempt_] {
                if (attempt == attempt_) work();
            },
            delay);
    }

    const std::function<Way()> findWay_;
    const std::filesystem::path file_;
    const std::function<void(State)> told_;
    Way way_ = Way::portal;
    std::optional<KeptKeyConsent> consent_;
    std::unique_ptr<RemoteKeyboard> keyboard_;
    std::function<void(bool)> answered_;
    KeymapText layout_;
    int attempt_ = 0;
    bool isOpen_ = false;
    GLibThread thread_{"remote-keys", [this] { begin(); }, [this] { keyboard_.reset(); }};
};

RemoteDesktopPoster::RemoteDesktopPoster(Scheduler& scheduler, std::function<Way()> findWay,
                                         std::filesystem::path consent,
                                         std::function<std::string()> activeClass)
    : ChordPoster(std::move(activeClass)), scheduler_(scheduler) {
    auto enter = lifetime_.guard([this](State state) {
        state_ = state;
        changes_.notify();
    });
    worker_ = std::make_unique<Worker>(
        std::move(findWay), std::move(consent),
        [&scheduler, enter](State state) { scheduler.post([enter, state] { enter(state); }); });
}

RemoteDesktopPoster::~RemoteDesktopPoster() = default;

Task<void> RemoteDesktopPoster::prepare(std::stop_token stop) {
    hasFailed_ = false;
    if (state_ != State::on) co_return;
    Promise<bool> opened(scheduler_);
    auto future = opened.future(std::move(stop));
    worker_->open([opened](bool isOpen) mutable { opened.resolve(isOpen); });
    hasFailed_ = !co_await future;
}

void RemoteDesktopPoster::setWanted(bool wanted) {
    worker_->setWanted(wanted);
}

void RemoteDesktopPoster::press(const ChordKeys& keys) {
    worker_->press(keys);
}

}  // namespace quorvi
