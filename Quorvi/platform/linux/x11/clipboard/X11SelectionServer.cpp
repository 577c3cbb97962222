#include "Quorvi/platform/linux/x11/clipboard/X11SelectionServer.h"

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

namespace quorvi {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t pieceSize = 256 * 1024;
constexpr Duration stallLimit = 30s;

std::span<const std::uint8_t> asBytes(std::span<const std::uint32_t> units) {
    return {reinterpret_cast<const std::uint8_t*>(units.data()), units.size_bytes()};
}

std::vector<std::string> namesOf(const PasteboardItem& item) {
    std::vector<std::string> names;
    for (const auto& one : item.representations) {
        names.push_back(one.type);
        names.push_back(one.encoding.empty() ? one.type : one.encoding);
    }
    return names;
}

}  // namespace

X11SelectionServer::X11SelectionServer(X11SelectionConnection& connection)
    : connection_(connection) {
    const auto atoms =
        connection_.atoms({"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "INCR", "NULL"});
    targets_ = atoms[0];
    multiple_ = atoms[1];
    timestamp_ = atoms[2];
    saveTargets_ = atoms[3];
    incr_ = atoms[4];
    null_ = atoms[5];
}

void X11SelectionServer::prepare(const PasteboardItem& item) {
    connection_.atoms(namesOf(item));
}

void X11SelectionServer::serve(std::shared_ptr<const PasteboardItem> item, std::uint32_t since) {
    const auto atoms = connection_.atoms(namesOf(*item));
    offers_.clear();
    for (std::size_t i = 0; i < item->representations.size(); ++i) {
        const auto& one = item->representations[i];
        const bool sized = one.format == 16 || one.format == 32;
        offers_.push_back({atoms[2 * i], atoms[2 * i + 1], sized ? one.format : 8, one.data});
    }
    item_ = std::move(item);
    since_ = since;
}

void X11SelectionServer::stopServing() {
    item_.reset();
    offers_.clear();
}

X11SelectionServer::Given X11SelectionServer::onRequest(const X11SelectionEvent& request) {
    const bool ours =
        item_ && (request.time == XCB_CURRENT_TIME || !isLaterTime(since_, request.time));
    auto given = Given::nothing;
    if (ours)
        given = request.target == multiple_
                    ? deliverMultiple(request)
                    : deliver(request.target, request.window, request.property);
    connection_.answer(request, given == Given::nothing ? 0 : request.property);
    return given;
}

X11SelectionServer::Given X11SelectionServer::deliver(std::uint32_t target, std::uint32_t window,
                                                      std::uint32_t property) {
    if (target == targets_) {
        deliverTargets(window, property);
        return Given::description;
    }
    if (target == timestamp_) {
        connection_.setProperty(window, property, XCB_ATOM_INTEGER, 32, asBytes({&since_, 1}));
        return Given::description;
    }
    if (target == saveTargets_) {  // a question of courtesy: there is nothing to do for it
        connection_.setProperty(window, property, null_, 32, {});
        return Given::description;
    }
    const auto offer = std::ranges::find(offers_, target, &Offer::target);
    if (offer == offers_.end() || !offer->data) return Given::nothing;
    deliverOffer(*offer, window, property);
    return Given::content;
}

void X11SelectionServer::deliverTargets(std::uint32_t window, std::uint32_t property) {
    std::vector<std::uint32_t> all{targets_, multiple_, timestamp_};
    for (const auto& offer : offers_) all.push_back(offer.target);
    connection_.setProperty(window, property, XCB_ATOM_ATOM, 32, asBytes(all));
}

// The property lists pairs of a target and a property; the second of a pair that fails becomes 0.
X11SelectionServer::Given X11SelectionServer::deliverMultiple(const X11SelectionEvent& request) {
    const auto list = connection_.readProperty(request.window, request.property);
    if (list.type == 0 || list.format != 32) return Given::nothing;
    auto given = Given::description;
    std::vector<std::uint32_t> pairs(list.data.size() / 4);
    std::copy_n(list.data.begin(), pairs.size() * 4, reinterpret_cast<std::uint8_t*>(pairs.data()));
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        const bool nested = pairs[i] == multiple_ || pairs[i + 1] == 0;
        const auto one = nested ? Given::nothing : deliver(pairs[i], request.window, pairs[i + 1]);
        if (one == Given::nothing) pairs[i + 1] = 0;
        given = std::max(given, one);
    }
    connection_.setProperty(request.window, request.property, list.type, 32, asBytes(pairs));
    return given;
}

void X11SelectionServer::deliverOffer(const Offer& offer, std::uint32_t window,
                                      std::uint32_t property) {
    if (offer.data->size() <= pieceSize) {
        connection_.setProperty(window, property, offer.type, offer.format, *offer.data);
        return;
    }
    // A requestor that asks into the same property again has given up the earlier transfer.
    std::erase_if(transfers_, [&](const Transfer& transfer) {
        return transfer.window == window && transfer.property == property;
    });
    connection_.watch(window, true);
    const auto size = static_cast<std::uint32_t>(offer.data->size());
    connection_.setProperty(window, property, incr_, 32, asBytes({&size, 1}));
    transfers_.push_back(
        {window, property, offer, 0, std::chrono::steady_clock::now() + stallLimit});
}

void X11SelectionServer::onPropertyDeleted(const X11SelectionEvent& event) {
    const auto transfer = std::ranges::find_if(transfers_, [&](const Transfer& each) {
        return each.window == event.window && each.property == event.property;
    });
    if (transfer == transfers_.end()) return;
    const auto& data = *transfer->offer.data;
    const auto size = std::min(pieceSize, data.size() - transfer->sent);
    connection_.setProperty(transfer->window, transfer->property, transfer->offer.type,
                            transfer->offer.format, std::span(data).subspan(transfer->sent, size));
    transfer->sent += size;
    transfer->deadline = std::chrono::steady_clock::now() + stallLimit;
    if (size == 0) end(transfer);  // the empty piece says that it was the last
}

X11SelectionServer::Transfers::iterator X11SelectionServer::end(Transfers::iterator transfer) {
    const auto window = transfer->window;
    const auto next = transfers_.erase(transfer);
    if (std::ranges::find(transfers_, window, &Transfer::window) == transfers_.end())
        connection_.watch(window, false);
    return next;
}

void X11SelectionServer::onWindowDestroyed(std::uint32_t window) {
    std::erase_if(transfers_, [window](const Transfer& each) { return each.window == window; });
}

TimePoint X11SelectionServer::dropStalled(TimePoint now) {
    auto next = TimePoint::max();
    for (auto each = transfers_.begin(); each != transfers_.end();) {
        if (each->deadline <= now) {
            each = end(each);
        } else {
            next = std::min(next, each->deadline);
            ++each;
        }
    }
    return next;
}

}  // namespace quorvi
