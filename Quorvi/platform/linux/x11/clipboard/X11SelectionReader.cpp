#include "Quorvi/platform/linux/x11/clipboard/X11SelectionReader.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include "QuorviCore/async/Task.h"

namespace quorvi {

namespace {

// The size that an owner announces is only a hint; a wrong one may not cost memory.
constexpr std::size_t largestReservation = 64 * 1024 * 1024;

std::vector<std::uint32_t> unitsOf(const X11Property& property) {
    std::vector<std::uint32_t> units;
    if (property.format != 32) return units;
    units.resize(property.data.size() / 4);
    std::copy_n(property.data.begin(), units.size() * 4,
                reinterpret_cast<std::uint8_t*>(units.data()));
    return units;
}

}  // namespace

// A property for one request; goes back to the free ones only when the exchange was completed.
class X11SelectionReader::Lease {
public:
    explicit Lease(X11SelectionReader& reader) : reader_(reader) {
        auto& free = reader_.freeProperties_;
        if (free.empty())
            free.push_back(reader_.connection_.atom("QUORVI_SELECTION_" +
                                                    std::to_string(++reader_.madeProperties_)));
        property_ = free.back();
        free.pop_back();
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease() {
        if (completed_)
            reader_.freeProperties_.push_back(property_);
        else
            reader_.lostProperties_.insert(property_);
        reader_.request_ = {};
    }

    std::uint32_t property() const { return property_; }
    void complete() { completed_ = true; }

private:
    X11SelectionReader& reader_;
    std::uint32_t property_ = 0;
    bool completed_ = false;
};

X11SelectionReader::X11SelectionReader(X11SelectionConnection& connection,
                                       ClipboardReadLimits limits)
    : connection_(connection), limits_(limits) {
    const auto atoms =
        connection_.atoms({"TARGETS", "INCR", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE",
                           "INSERT_SELECTION", "INSERT_PROPERTY"});
    targets_ = atoms[0];
    incr_ = atoms[1];
    skipped_.insert(atoms.begin(), atoms.end());
}

std::vector<PasteboardItem> X11SelectionReader::read(const std::function<bool()>& abandoned) {
    abandoned_ = &abandoned;
    end_ = std::chrono::steady_clock::now() + limits_.total;
    for (;;) {
        if (connection_.clipboardOwner() == 0) return {};
        ownerChanged_ = false;
        try {
            auto item = readOwner();
            if (item.representations.empty()) return {};
            return {std::move(item)};
        } catch (const OwnerChanged&) {
        }
    }
}

PasteboardItem X11SelectionReader::readOwner() {
    time_ = connection_.serverTime();
    const auto offered = targets();
    const auto names = connection_.names(offered);
    PasteboardItem item;
    bool silent = false;
    for (std::size_t i = 0; i < offered.size(); ++i) {
        std::optional<X11Property> content;
        try {
            content = fetch(offered[i]);
        } catch (const X11OwnerSilent&) {
            // A picture that its owner converts too slowly must not cost the user the rest.
            silent = true;
            if (std::chrono::steady_clock::now() >= end_) break;
        }
        if (!content) continue;
        const auto encoding = connection_.names({content->type});
        item.representations.push_back({names[i], encoding[0], content->format,
                                        std::make_shared<const Bytes>(std::move(content->data))});
    }
    if (silent && item.representations.empty()) throw X11OwnerSilent{};
    return item;
}

// What the owner offers, without questions and repetitions. An owner too simple to say is asked for
// text.
std::vector<std::uint32_t> X11SelectionReader::targets() {
    const auto answer = fetch(targets_);
    if (!answer) return connection_.atoms({"UTF8_STRING", "STRING"});
    auto seen = skipped_;
    seen.insert(0);
    std::vector<std::uint32_t> offered;
    for (const auto target : unitsOf(*answer))
        if (seen.insert(target).second) offered.push_back(target);
    return offered;
}

std::optional<X11Property> X11SelectionReader::fetch(std::uint32_t target) {
    Lease lease(*this);
    request_ = {.target = target, .property = lease.property()};
    connection_.convertClipboard(target, lease.property(), time_);
    waitFor([this] { return request_.answered; });
    if (request_.refused) {
        lease.complete();
        return std::nullopt;
    }
    request_.pieces = 0;
    auto content = connection_.takeProperty(connection_.window(), lease.property());
    if (content.type == incr_) {
        const auto announced = unitsOf(content);
        content = takePieces(announced.empty() ? 0 : announced[0]);
    }
    lease.complete();
    return content.type == 0 ? std::nullopt : std::optional(std::move(content));
}

// Each piece that we take (and thereby delete) makes the owner write the next; an empty one is the
// last.
X11Property X11SelectionReader::takePieces(std::size_t expected) {
    X11Property whole;
    whole.data.reserve(std::min(expected, largestReservation));
    for (;;) {
        waitFor([this] { return request_.pieces > 0; });
        request_.pieces = 0;
        const auto before = whole.data.size();
        const bool set = connection_.takeProperty(connection_.window(), request_.property, whole);
        if (set && whole.data.size() == before) return whole;
    }
}

void X11SelectionReader::waitFor(const std::function<bool()>& condition) {
    const auto limit = std::min(end_, std::chrono::steady_clock::now() + limits_.progress);
    for (;;) {
        if ((*abandoned_)()) throw Cancelled{};
        if (ownerChanged_) throw OwnerChanged{};
        if (condition()) return;
        if (std::chrono::steady_clock::now() >= limit) throw X11OwnerSilent{};
        connection_.wait(limit);
    }
}

void X11SelectionReader::onReply(const X11SelectionEvent& event) {
    if (request_.property == 0 || event.target != request_.target) return;
    // A refusal names no property; its time tells it from a late one to an earlier request.
    const bool refusal = event.property == 0 && (event.time == time_ || event.time == 0);
    if (!refusal && event.property != request_.property) return;
    request_.answered = true;
    request_.refused = refusal;
}

void X11SelectionReader::onPropertySet(const X11SelectionEvent& event) {
    if (event.window != connection_.window()) return;
    if (event.property == request_.property) {
        ++request_.pieces;
    } else if (lostProperties_.contains(event.property)) {
        // A late answer: taking it lets its owner finish and the server forget it.
        connection_.deleteProperty(event.window, event.property);
    }
}

}  // namespace quorvi
