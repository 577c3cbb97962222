#include <algorithm>
#include <cmath>
#include <utility>

#include "QuorviCore/json/Base64.h"
#include "QuorviCore/json/JsonWriting.h"
#include "QuorviCore/sync/SyncDocument.h"

namespace quorvi {

namespace {

// A piece ends once it has this size.
constexpr std::size_t pieceSize = 256 * 1024;

void appendBytes(std::string& out, std::string_view bytes) {
    out += '"';
    json::appendBase64(out, bytes);
    out += '"';
}

}  // namespace

SyncDocumentEncoder::SyncDocumentEncoder(const SyncState& state) : state_(state) {}

void SyncDocumentEncoder::begin(Part part) {
    part_ = part;
    position_ = 0;
    elements_.clear();
    const auto& ledger = state_.ledger;
    switch (part) {
        case Part::baseline:
            for (const auto& [id, item] : ledger.items())
                if (const auto* payload = ledger.baseline(item)) elements_.push_back({id, payload});
            for (const auto& [id, held] : ledger.differences())
                if (held.payload && !ledger.item(id)) elements_.push_back({id, &*held.payload});
            break;
        case Part::items:
            for (const auto& [id, item] : ledger.items()) elements_.push_back({id, nullptr, &item});
            break;
        case Part::pending:
            for (const auto& id : state_.pending) elements_.push_back({id});
            break;
        case Part::records:
            for (const auto& [id, record] : state_.records) elements_.push_back({id, &record});
            break;
        default:
            break;
    }
    std::ranges::sort(elements_, {}, &Element::id);
}

void SyncDocumentEncoder::appendHead() {
    piece_ += '{';
    if (state_.cloud) {
        piece_ += R"("cloud":)";
        json::appendString(piece_, *state_.cloud);
        piece_ += ',';
    }
    if (state_.diagnostics) {
        piece_ += R"("diagnostics":{)";
        for (const auto& [event, count] : *state_.diagnostics) {
            if (piece_.back() != '{') piece_ += ',';
            json::appendString(piece_, event);
            piece_ += ':';
            json::appendNumber(piece_, count);
        }
        piece_ += "},";
    }
    piece_ += R"("initialFetchComplete":)";
    json::appendBoolean(piece_, state_.initialFetchComplete);
    const auto& date = state_.lastSynced;
    if (date && std::isfinite(date->secondsSinceReferenceDate)) {
        piece_ += R"(,"lastSynced":)";
        json::appendNumber(piece_, date->secondsSinceReferenceDate);
    }
    piece_ += R"(,"ledger":{"baseline":{)";
}

void SyncDocumentEncoder::appendElement(const Element& element) {
    if (position_ > 0) piece_ += ',';
    json::appendString(piece_, element.id);
    if (part_ == Part::pending) return;
    piece_ += ':';
    if (element.item)
        element.item->appendEncoded(piece_);
    else
        appendBytes(piece_, *element.bytes);
}

void SyncDocumentEncoder::finishPart() {
    switch (part_) {
        case Part::head:
            appendHead();
            return begin(Part::baseline);
        case Part::baseline:
            piece_ += R"(},"clock":)";
            json::appendNumber(piece_, state_.ledger.clock());
            piece_ += R"(,"device":)";
            json::appendString(piece_, state_.ledger.device());
            piece_ += R"(,"items":{)";
            return begin(Part::items);
        case Part::items:
            piece_ += "}}";
            if (state_.owner) {
                piece_ += R"(,"owner":)";
                json::appendString(piece_, *state_.owner);
            }
            piece_ += R"(,"pending":[)";
            return begin(Part::pending);
        case Part::pending:
            piece_ += R"(],"records":{)";
            return begin(Part::records);
        case Part::records:
            piece_ += '}';
            return begin(Part::tail);
        case Part::tail:
            if (state_.engineState) {
                piece_ += R"(,"state":)";
                appendBytes(piece_, *state_.engineState);
            }
            piece_ += '}';
            return begin(Part::end);
        case Part::end:
            return;
    }
}

std::string_view SyncDocumentEncoder::next() {
    piece_.clear();
    while (part_ != Part::end && piece_.size() < pieceSize) {
        if (position_ == elements_.size()) {
            finishPart();
            continue;
        }
        appendElement(elements_[position_]);
        ++position_;
    }
    return piece_;
}

}  // namespace quorvi
