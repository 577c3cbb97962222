#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "QuorviCore/sync/SyncDelta.h"
#include "QuorviCore/sync/SyncState.h"

namespace quorvi {

// Encodes a state as a JSON document, keys sorted and without white space, in pieces, so that the
// document is never in memory as a whole. The state outlives the encoder and must not change
// meanwhile. A non-finite date is left out.
class SyncDocumentEncoder {
public:
    explicit SyncDocumentEncoder(const SyncState& state);

    // Returns the next piece, valid until the next call; empty at the end.
    std::string_view next();

private:
    enum class Part { head, baseline, items, pending, records, tail, end };

    struct Element {
        std::string_view id;
        const SharedString* bytes = nullptr;
        const SyncItem* item = nullptr;
    };

    void begin(Part part);
    void appendHead();
    void appendElement(const Element& element);
    void finishPart();

    const SyncState& state_;
    Part part_ = Part::head;
    std::vector<Element> elements_;  // of the part, sorted
    std::size_t position_ = 0;
    std::string piece_;
};

// Parses a document strictly; unknown keys are ignored. Throws SyncFormatError for any fault, and
// for a missing required key.
SyncState decodeSyncDocument(std::string document);

}  // namespace quorvi
