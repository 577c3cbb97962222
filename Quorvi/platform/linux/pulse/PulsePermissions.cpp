#include "Quorvi/platform/linux/pulse/PulsePermissions.h"

#include <cstdint>
#include <cstdlib>
#include <map>
#include <utility>

#include "Quorvi/platform/linux/xdg/SettingsProgram.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// A server that accepts a connection and never answers counts as missing.
constexpr Duration answerLimit = 3s;

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

}  // namespace

// Each request is answered once, by the server or by its timer.
struct PulsePermissions::Requests {
    struct Request {
        std::function<void()> answered;
        Timer limit;
    };
    std::uint64_t lastId = 0;
    std::map<std::uint64_t, Request> open;

    void answer(std::uint64_t id) {
        const auto node = open.extract(id);
        if (node && node.mapped().answered) node.mapped().answered();
    }
};

PulsePermissions::PulsePermissions(PulseConnection& connection, Scheduler& scheduler)
    : connection_(connection), scheduler_(scheduler), requests_(std::make_shared<Requests>()) {}

PulsePermissions::~PulsePermissions() = default;

MicrophoneAuthorization PulsePermissions::microphone() const {
    const auto has = connection_.hasMicrophone();
    if (!has) return MicrophoneAuthorization::notDetermined;
    return *has ? MicrophoneAuthorization::authorized : MicrophoneAuthorization::denied;
}

void PulsePermissions::requestMicrophone(std::function<void()> answered) {
    const auto id = ++requests_->lastId;
    const auto answer = [weak = std::weak_ptr(requests_), id] {
        if (const auto requests = weak.lock()) requests->answer(id);
    };
    requests_->open.emplace(
        id, Requests::Request{std::move(answered), scheduler_.after(answerLimit, answer)});
    connection_.refresh(answer);
}

void PulsePermissions::openPrivacyPane(PrivacyPane pane) {
    launcher_ = std::jthread([programs = settingsPrograms(pane, variable("XDG_CURRENT_DESKTOP")),
                              path = variable("PATH")] { startFirst(programs, path); });
}

}  // namespace quorvi
