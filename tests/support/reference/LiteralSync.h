#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "QuorviCore/sync/LocalSnapshot.h"

// The ledger in its simplest form: whole maps, plain strings, every value encoded at every capture.
// Tests compare results with it, benchmarks times.
namespace quorvi::test {

struct LiteralItem {
    std::string id;
    std::optional<std::string> payload;
    std::int64_t revision = 0;
    std::string device;
    bool redacted = false;

    bool operator==(const LiteralItem&) const = default;

    static LiteralItem of(const SyncItem& item);

    LiteralItem merging(const LiteralItem& incoming) const;
};

using LiteralPayloads = std::map<std::string, std::string>;

struct LiteralLedger {
    std::map<std::string, LiteralItem> items;
    std::string device;
    std::int64_t clock = 1;
    LiteralPayloads baseline;

    void merge(const LiteralItem& item);

    // `order`: the ids that get their revisions first, since any order is valid.
    std::set<std::string> capture(const LiteralPayloads& current, bool seed,
                                  std::int64_t milliseconds,
                                  const std::vector<SharedString>& order = {});

    static bool hasText(const std::string& payload);
};

LiteralPayloads plain(const SyncLedger::Payloads& payloads);

}  // namespace quorvi::test
