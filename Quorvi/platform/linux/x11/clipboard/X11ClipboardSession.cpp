#include "Quorvi/platform/linux/x11/clipboard/X11ClipboardSession.h"

#include <chrono>
#include <utility>

#include "Quorvi/platform/linux/x11/X11ActiveWindow.h"

namespace quorvi {

namespace {

// X11 knows one item only: representations of further items are offered beside those of the first.
std::shared_ptr<const PasteboardItem> merged(std::vector<PasteboardItem> items) {
    PasteboardItem all;
    for (auto& item : items)
        for (auto& one : item.representations) all.representations.push_back(std::move(one));
    return std::make_shared<const PasteboardItem>(std::move(all));
}

}  // namespace

X11ClipboardSession::X11ClipboardSession(const std::string& display, int wakeFd,
                                         ClipboardReadLimits limits,
                                         std::atomic<std::int64_t>& changeCount,
                                         ClipboardKeeper& keeper,
                                         std::function<void(PasteboardRead)> onRead)
    : changeCount_(changeCount),
      keeper_(keeper),
      onRead_(std::move(onRead)),
      connection_(display, wakeFd),
      server_(connection_),
      reader_(connection_, limits) {
    connection_.setHandler([this](const X11SelectionEvent& event) { handle(event); });
    connection_.sync();
}

void X11ClipboardSession::handle(const X11SelectionEvent& event) {
    using enum X11SelectionEvent::Kind;
    switch (event.kind) {
        case request:
            return requested(event);
        case propertyDeleted:
            return server_.onPropertyDeleted(event);
        case windowDestroyed:
            return server_.onWindowDestroyed(event.window);
        case reply:
            return reader_.onReply(event);
        case propertySet:
            return reader_.onPropertySet(event);
        case ownerChanged:
            return this->ownerChanged(event);
    }
}

// The reader has its answer before anybody asks who it is.
void X11ClipboardSession::requested(const X11SelectionEvent& event) {
    const auto given = server_.onRequest(event);
    if (given == X11SelectionServer::Given::nothing) return;
    connection_.flush();
    const auto& connection = connection_.connection();
    auto reader = x11ProcessOf(connection, event.window);
    if (reader == 0) {
        const auto active = x11ActiveWindow(connection);
        if (x11SameClient(connection, active, event.window))
            reader = x11ProcessOf(connection, active);
    }
    onRead_({reader, given == X11SelectionServer::Given::content, changeCount_});
}

void X11ClipboardSession::ownerChanged(const X11SelectionEvent& event) {
    const auto count = ++changeCount_;
    reader_.onOwnerChanged();
    if (write_ && !write_->changeCount && event.window == write_->owner &&
        event.time == write_->time) {
        write_->changeCount = count;
        if (write_->owner != 0) return server_.serve(write_->item, write_->time);
    }
    server_.stopServing();
    keeper_.forget();
}

bool X11ClipboardSession::handOver() {
    if (!isOffering()) return false;
    keeper_.takeOver();
    return true;
}

// What we offer; empty when the clipboard is not ours.
std::vector<PasteboardItem> X11ClipboardSession::offered() {
    connection_.sync();
    if (!server_.item()) return {};
    return {*server_.item()};
}

std::vector<PasteboardItem> X11ClipboardSession::read(const std::function<bool()>& abandoned) {
    auto own = offered();
    return own.empty() ? reader_.read(abandoned) : own;
}

std::optional<std::int64_t> X11ClipboardSession::take(std::vector<PasteboardItem> items,
                                                      const std::vector<PasteboardItem>& afterwards,
                                                      std::uint32_t time) {
    keeper_.prepare(afterwards);
    keeper_.guard(connection_.window(), items);
    auto item = merged(std::move(items));
    server_.prepare(*item);
    const auto owner = item->representations.empty() ? 0 : connection_.window();
    write_ = Write{std::move(item), owner, time, std::nullopt};
    connection_.setClipboardOwner(owner, time);
    connection_.sync();
    const auto count = write_->changeCount;
    write_.reset();
    return count;
}

std::optional<std::int64_t> X11ClipboardSession::write(
    std::vector<PasteboardItem> items, const std::vector<PasteboardItem>& afterwards,
    std::optional<std::int64_t> expected) {
    // Somebody who copies after this moment has a later time, and the server refuses ours.
    const auto now = connection_.serverTime();
    if (expected && changeCount_ != *expected) return std::nullopt;
    return take(std::move(items), afterwards, now);
}

// The server refuses an ownership that is older than the current one. Taking the clipboard with the
// time of the ownership we hold therefore succeeds only while it is still ours: a copy that the
// user makes between the comparison and the write wins as well.
void X11ClipboardSession::restore(std::int64_t expected, std::vector<PasteboardItem> items) {
    const auto now = connection_.serverTime();
    if (changeCount_ != expected) return;
    const auto afterwards = items;
    take(std::move(items), afterwards, server_.item() ? server_.since() : now);
}

void X11ClipboardSession::wait() {
    connection_.wait(server_.dropStalled(std::chrono::steady_clock::now()));
}

}  // namespace quorvi
