#include <algorithm>
#include <cmath>
#include <utility>

#include "QuorviCore/json/Base64.h"
#include "QuorviCore/json/JsonWriting.h"
#include "QuorviCore/sync/SyncDocument.h"

namespace quorvi {

namespace {

// A piece is written out once it has this size.
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
    ids_.clear();
    const auto& ledger = state_.ledger;
    switch (part) {
        case Part::baseline:
            for (const auto& [id, item] : ledger.items())
                if (ledger.baseline(id)) ids_.push_back(id);
            for (const auto& [id, payload] : ledger.differences())
                if (payload && !ledger.item(id)) ids_.push_back(id);
            break;
        case Part::items:
            for (const auto& [id, item] : ledger.items()) ids_.push_back(id);
            break;
        case Part::pending:
            ids_.assign(state_.pending.begin(), state_.pending.end());
            break;
        case Part::records:
            for (const auto& [id, record] : state_.records) ids_.push_back(id);
            break;
        default:
            break;
    }
    std::ranges::sort(ids_);
}

void SyncDocumentEncoder::appendHead() {
    piece_ += '{';
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

void SyncDocumentEncoder::appendElement(const SharedString& id) {
    if (position_ > 0) piece_ += ',';
    json::appendString(piece_, id);
    if (part_ == Part::pending) return;
    piece_ += ':';
    if (part_ == Part::baseline)
        appendBytes(piece_, *state_.ledger.baseline(id));
    else if (part_ == Part::items)
        state_.ledger.item(id)->appendEncoded(piece_);
    else
        appendBytes(piece_, state_.records.find(id)->second);
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
            if (state_.state) {
                piece_ += R"(,"state":)";
                appendBytes(piece_, *state_.state);
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
        if (position_ == ids_.size()) {
            finishPart();
            continue;
        }
        appendElement(ids_[position_]);
        ++position_;
    }
    return piece_;
}

}  // namespace quorvi
