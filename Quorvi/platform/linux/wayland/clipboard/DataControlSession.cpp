#include "Quorvi/platform/linux/wayland/clipboard/DataControlSession.h"

#include <fcntl.h>
#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "QuorviCore/async/Task.h"
#include "protocols/data-control.h"

namespace quorvi {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostTypes = 200;
constexpr int mostAttempts = 3;
// A program that asked for the content and takes nothing of it.
constexpr auto stalledAfter = 10s;

// Nothing here has a number; the keeper needs none.
constexpr std::uint32_t anyWindow = 1;

// Questions of X11's clipboard that a bridge may pass on; they are no content.
constexpr std::array<std::string_view, 5> questions{"TARGETS", "MULTIPLE", "TIMESTAMP",
                                                    "SAVE_TARGETS", "DELETE"};

std::shared_ptr<const Bytes> dataOf(const std::vector<PasteboardItem>& items,
                                    const std::string& type) {
    for (const auto& item : items)
        for (const auto& one : item.representations)
            if (one.type == type) return one.data;
    return nullptr;
}

}  // namespace

struct DataControlSession::Arrival {
    std::string type;
    std::unique_ptr<Descriptor> pipe;
    std::shared_ptr<Bytes> data = std::make_shared<Bytes>();
};

DataControlSession::Offer::~Offer() {
    zwlr_data_control_offer_v1_destroy(proxy);
}

struct DataControlSession::Listeners {
    static DataControlSession& self(void* data) { return *static_cast<DataControlSession*>(data); }

    static void type(void* data, zwlr_data_control_offer_v1*, const char* type) {
        auto& offer = *static_cast<Offer*>(data);
        if (offer.types.size() < mostTypes &&
            std::ranges::find(offer.types, type) == offer.types.end() &&
            std::ranges::find(questions, type) == questions.end())
            offer.types.emplace_back(type);
    }
    static constexpr zwlr_data_control_offer_v1_listener offer{type};

    static void announced(void* data, zwlr_data_control_device_v1*,
                          zwlr_data_control_offer_v1* proxy) {
        auto& offers = self(data).announced_;
        offers.push_back(std::make_unique<Offer>());
        offers.back()->proxy = proxy;
        zwlr_data_control_offer_v1_add_listener(proxy, &offer, offers.back().get());
    }
    static void selection(void* data, zwlr_data_control_device_v1*,
                          zwlr_data_control_offer_v1* proxy) {
        self(data).selectionChanged(proxy);
    }
    static void finished(void*, zwlr_data_control_device_v1*) {}
    static void primary(void* data, zwlr_data_control_device_v1*,
                        zwlr_data_control_offer_v1* proxy) {
        std::erase_if(self(data).announced_,
                      [proxy](const auto& offer) { return offer->proxy == proxy; });
    }
    static constexpr zwlr_data_control_device_v1_listener device{announced, selection, finished,
                                                                 primary};

    static void send(void* data, zwlr_data_control_source_v1* source, const char* type,
                     int descriptor) {
        if (source == self(data).source_)
            self(data).send(type, descriptor);
        else
            close(descriptor);
    }
    static void cancelled(void* data, zwlr_data_control_source_v1* source) {
        if (source == self(data).source_) self(data).cancelled();
    }
    static constexpr zwlr_data_control_source_v1_listener source{send, cancelled};
};

bool DataControlSession::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(zwlr_data_control_manager_v1_interface.name) > 0;
}

DataControlSession::DataControlSession(ClipboardReadLimits limits,
                                       const ThreadedPasteboard::Thread& thread,
                                       ClipboardKeeper& keeper)
    : limits_(limits), thread_(thread), keeper_(keeper) {
    if (!connection_.isAlive() || !connection_.seat()) throw ClipboardConnectionLost{};
    manager_ =
        connection_.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 2);
    if (!manager_) throw ClipboardConnectionLost{};
    device_ = zwlr_data_control_manager_v1_get_data_device(manager_, connection_.seat());
    zwlr_data_control_device_v1_add_listener(device_, &Listeners::device, this);
    synchronise();
    hasStarted_ = true;
}

DataControlSession::~DataControlSession() {
    announced_.clear();
    selection_.reset();
    if (source_) zwlr_data_control_source_v1_destroy(source_);
    if (device_) zwlr_data_control_device_v1_destroy(device_);
    if (manager_) zwlr_data_control_manager_v1_destroy(manager_);
    connection_.flush();
}

void DataControlSession::synchronise() {
    if (!connection_.synchronise(limits_.total)) throw ClipboardConnectionLost{};
}

// The content at the connection is no change.
void DataControlSession::selectionChanged(zwlr_data_control_offer_v1* proxy) {
    selection_.reset();
    const auto found = std::ranges::find_if(
        announced_, [proxy](const auto& offer) { return offer->proxy == proxy; });
    if (found != announced_.end()) {
        selection_ = std::move(*found);
        announced_.erase(found);
    }
    if (hasStarted_) ++changeCount_;
}

void DataControlSession::cancelled() {
    replacedAt_ = changeCount_;
    zwlr_data_control_source_v1_destroy(std::exchange(source_, nullptr));
    items_.clear();
    keeper_.forget();
}

void DataControlSession::send(const std::string& type, int descriptor) {
    auto data = dataOf(items_, type);
    if (!data) {
        close(descriptor);
        return;
    }
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    deliveries_.push_back(
        {std::make_unique<Descriptor>(descriptor), std::move(data), 0, Clock::now()});
    deliver();
    thread_.onRead({.reader = 0, .content = true, .changeCount = changeCount_});
}

// Writes what the readers take without waiting.
void DataControlSession::deliver() {
    std::erase_if(deliveries_, [](Delivery& delivery) {
        while (delivery.sent < delivery.data->size()) {
            const auto written =
                ::write(delivery.pipe->get(), delivery.data->data() + delivery.sent,
                        delivery.data->size() - delivery.sent);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0)
                return errno != EAGAIN || Clock::now() - delivery.lastProgress > stalledAfter;
            delivery.sent += static_cast<std::size_t>(written);
            delivery.lastProgress = Clock::now();
        }
        return true;
    });
}

// Waits for the compositor, for readers of ours, and for what `ready` names; handles the former
// two.
void DataControlSession::waitForAny(std::vector<pollfd>& ready, Duration time) {
    // Whatever an earlier call has read is not announced by the descriptor.
    while (connection_.dispatchQueued()) time = Duration::zero();
    connection_.flush();
    const auto named = ready.size();
    ready.push_back({connection_.fileDescriptor(), POLLIN, 0});
    for (const auto& delivery : deliveries_) ready.push_back({delivery.pipe->get(), POLLOUT, 0});
    if (!deliveries_.empty()) time = std::min<Duration>(time, stalledAfter);
    const auto limit = std::chrono::ceil<std::chrono::milliseconds>(time).count();
    poll(ready.data(), ready.size(), static_cast<int>(std::min<std::int64_t>(limit, 1 << 30)));
    const bool hasEvents = ready[named].revents != 0;
    ready.resize(named);
    if (hasEvents) connection_.dispatch();
    deliver();
    if (!connection_.isAlive()) throw ClipboardConnectionLost{};
}

void DataControlSession::wait() {
    std::vector<pollfd> ready{{thread_.wakeFd, POLLIN, 0}};
    while (ready[0].revents == 0) waitForAny(ready, std::chrono::hours(1));
    emptyWake();
}

void DataControlSession::emptyWake() const {
    std::uint64_t wakes = 0;
    [[maybe_unused]] const auto got = ::read(thread_.wakeFd, &wakes, sizeof wakes);
}

bool DataControlSession::isOffering() {
    synchronise();
    return source_ != nullptr;
}

bool DataControlSession::handOver() {
    if (!isOffering()) return false;
    keeper_.takeOver();
    return true;
}

bool DataControlSession::isEmpty() {
    synchronise();
    return !source_ && !selection_;
}

bool DataControlSession::waitForChange(Duration limit) {
    const auto before = changeCount_.load();
    const auto end = Clock::now() + limit;
    std::vector<pollfd> others;
    while (changeCount_ == before && Clock::now() < end) waitForAny(others, end - Clock::now());
    return changeCount_ != before;
}

std::vector<DataControlSession::Arrival> DataControlSession::requestAll() {
    std::vector<Arrival> arrivals;
    for (const auto& type : selection_->types) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) break;
        const Descriptor theirs(ends[1]);
        // Only our end: most programs expect to be able to block.
        fcntl(ends[1], F_SETFL, fcntl(ends[1], F_GETFL) & ~O_NONBLOCK);
        zwlr_data_control_offer_v1_receive(selection_->proxy, type.c_str(), theirs.get());
        connection_.flush();
        arrivals.push_back({type, std::make_unique<Descriptor>(ends[0])});
    }
    return arrivals;
}

void DataControlSession::receiveAll(std::vector<Arrival>& arrivals,
                                    const std::function<bool()>& abandoned) {
    const auto end = Clock::now() + limits_.total;
    auto lastProgress = Clock::now();
    for (;;) {
        std::vector<pollfd> ready{{thread_.wakeFd, POLLIN, 0}};
        for (const auto& arrival : arrivals)
            if (arrival.pipe) ready.push_back({arrival.pipe->get(), POLLIN, 0});
        if (ready.size() == 1) return;
        const auto latest = std::min(end, lastProgress + limits_.progress);
        if (Clock::now() >= latest) throw ClipboardOwnerSilent{};
        waitForAny(ready, latest - Clock::now());
        if (ready[0].revents != 0) emptyWake();
        if (abandoned()) throw Cancelled{};
        for (auto& arrival : arrivals)
            if (arrival.pipe) receive(arrival, lastProgress);
    }
}

// Takes what has arrived; the pipe goes at its end.
void DataControlSession::receive(Arrival& arrival, Clock::time_point& lastProgress) {
    std::array<std::uint8_t, 65536> piece;
    for (;;) {
        const auto got = ::read(arrival.pipe->get(), piece.data(), piece.size());
        if (got < 0 && (errno == EAGAIN || errno == EINTR)) return;
        lastProgress = Clock::now();
        if (got <= 0) return arrival.pipe.reset();
        arrival.data->insert(arrival.data->end(), piece.begin(), piece.begin() + got);
    }
}

std::vector<PasteboardItem> DataControlSession::read(const std::function<bool()>& abandoned) {
    synchronise();
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        if (source_) return items_;
        if (!selection_ || selection_->types.empty()) return {};
        const auto before = changeCount_.load();
        auto arrivals = requestAll();
        receiveAll(arrivals, abandoned);
        // An owner that ends amid its data closes the pipe as if that were all.
        synchronise();
        if (changeCount_ != before) continue;
        PasteboardItem item;
        for (auto& arrival : arrivals)
            item.representations.push_back(
                {arrival.type, arrival.type, 8, std::move(arrival.data)});
        return {std::move(item)};
    }
    return {};
}

std::optional<std::int64_t> DataControlSession::write(std::vector<PasteboardItem> items,
                                                      const std::vector<PasteboardItem>& afterwards,
                                                      std::optional<std::int64_t> expected) {
    synchronise();
    if (expected && changeCount_ != *expected) return std::nullopt;
    keeper_.prepare(afterwards);
    keeper_.guard(anyWindow, items);
    const auto before = changeCount_.load();
    auto* const former = std::exchange(source_, nullptr);
    std::erase_if(items, [](const PasteboardItem& item) { return item.representations.empty(); });
    if (!items.empty()) {
        source_ = zwlr_data_control_manager_v1_create_data_source(manager_);
        zwlr_data_control_source_v1_add_listener(source_, &Listeners::source, this);
        for (const auto& item : items)
            for (const auto& one : item.representations)
                zwlr_data_control_source_v1_offer(source_, one.type.c_str());
    }
    items_ = std::move(items);
    replacedAt_.reset();
    zwlr_data_control_device_v1_set_selection(device_, source_);
    if (former) zwlr_data_control_source_v1_destroy(former);
    synchronise();
    if (changeCount_ == before) ++changeCount_;  // emptied what was empty
    return replacedAt_.value_or(changeCount_);
}

// The protocol has no times: a copy between the comparison and the write is lost.
void DataControlSession::restore(std::int64_t expected, std::vector<PasteboardItem> items) {
    const auto afterwards = items;
    write(std::move(items), afterwards, expected);
}

}  // namespace quorvi
