#include "QuorviCore/sync/SyncDocument.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/reference/RandomSyncState.h"

namespace quorvi::test {
namespace {

// A small state with every kind of value.
SyncState sample() {
    SyncLedger::Parts parts{.device = "DEV", .clock = 77};
    const auto add = [&parts](std::string_view id, std::optional<SharedString> payload) {
        parts.items.emplace(id, SyncItem(id, std::move(payload), 7, "DEV", false));
    };
    add("setting:a", "1");
    add("setting:b", "2");
    add("setting:c", std::nullopt);
    parts.differences.emplace("setting:b", BaselineValue());
    parts.differences.emplace("setting:c", BaselineValue{"3"});
    SyncState state{.ledger = SyncLedger(std::move(parts)), .owner = "me", .engineState = "engine"};
    state.records.emplace("setting:a", "tag");
    state.pending = {"setting:c", "setting:b"};
    state.initialFetchComplete = true;
    state.lastSynced = Date{1.5};
    state.diagnostics = {{"mergedRecords", 3}};
    return state;
}

const std::string written =
    R"({"diagnostics":{"mergedRecords":3},"initialFetchComplete":true,"lastSynced":1.5,)"
    R"("ledger":{"baseline":{"setting:a":"MQ==","setting:c":"Mw=="},"clock":77,"device":"DEV",)"
    R"("items":{"setting:a":{"device":"DEV","id":"setting:a","payload":"MQ==","redacted":false,)"
    R"("revision":7},"setting:b":{"device":"DEV","id":"setting:b","payload":"Mg==",)"
    R"("redacted":false,"revision":7},"setting:c":{"device":"DEV","id":"setting:c",)"
    R"("redacted":false,"revision":7}}},"owner":"me","pending":["setting:b","setting:c"],)"
    R"("records":{"setting:a":"dGFn"},"state":"ZW5naW5l"})";

TEST(SyncDocument, IsWrittenInOneForm) {
    EXPECT_EQ(documentOf(sample()), written);
    EXPECT_EQ(documentOf(decodeSyncDocument(written)), written);
    const SyncState empty;
    EXPECT_EQ(documentOf(empty),
              R"({"initialFetchComplete":false,"ledger":{"baseline":{},"clock":1,"device":")" +
                  empty.ledger.device().string() + R"(","items":{}},"pending":[],"records":{}})");
}

// Returns the document with one part replaced.
std::string with(std::string document, std::string_view part, std::string_view replacement) {
    const auto at = document.find(part);
    EXPECT_NE(at, document.npos) << part;
    return document.replace(at, part.size(), replacement);
}

TEST(SyncDocument, IsReadInAnyOrderAndStrictly) {
    struct {
        std::string_view part, replacement;
    } const same[]{
        {R"("owner":"me",)", R"("unknown":{"ledger":[1,{"items":null}]},"owner":"me",)"},
        {R"("clock":77)", R"( "clock" : 77.0 )"},
        {R"("owner":"me")", R"("owner":"\u006de")"},
        {R"(,"pending":["setting:b","setting:c"])",
         R"(,"pending":["setting:c","setting:b","setting:c"])"},
    };
    for (const auto& [part, replacement] : same)
        EXPECT_EQ(documentOf(decodeSyncDocument(with(written, part, replacement))), written);

    const auto bare = decodeSyncDocument(with(written, R"("owner":"me",)", R"("owner":null,)"));
    EXPECT_FALSE(bare.owner);
    const SyncState empty;
    EXPECT_EQ(documentOf(decodeSyncDocument(documentOf(empty))), documentOf(empty));

    struct {
        std::string_view part, replacement;
    } const wrong[]{
        {R"("initialFetchComplete":true,)", ""},
        {R"("pending":["setting:b","setting:c"])", R"("pending":["setting:b",1])"},
        {R"("dGFn")", R"("dGF")"},
        {R"("clock":77,)", ""},
        {R"("clock":77)", R"("clock":9223372036854775808)"},
        {R"("baseline":{"setting:a":"MQ==","setting:c":"Mw=="},)", ""},
        {R"("setting:a":"MQ==")", R"("setting:a":"M")"},
        {R"("id":"setting:a")", R"("id":"setting:x")"},
        {R"("redacted":false,)", ""},
        {R"("owner":"me")", "\"owner\":\"\xFF\""},
        {R"({"diagnostics")", R"({"diagnostics":[],"x")"},
        {R"("state":"ZW5naW5l"})", R"("state":"ZW5naW5l")"},
        {R"("state":"ZW5naW5l"})", R"("state":"ZW5naW5l"} x)"},
    };
    for (const auto& [part, replacement] : wrong)
        EXPECT_THROW(decodeSyncDocument(with(written, part, replacement)), SyncFormatError)
            << part << " → " << replacement;
    for (std::size_t size = 0; size < written.size(); size += 7)
        EXPECT_THROW(decodeSyncDocument(written.substr(0, size)), SyncFormatError);
    EXPECT_THROW(decodeSyncDocument(R"({"x":)" + std::string(1'000'000, '[')), SyncFormatError);
}

TEST(SyncDocument, ALargeDocumentIsEncodedInPieces) {
    SyncState state;
    LocalChanges changes;
    for (int i = 0; i < 3'000; ++i)
        changes.push_back(
            {"setting:" + std::to_string(i), SharedString(std::string(400, 'x')), false});
    state.ledger.capture(changes, false, {0});
    SyncDocumentEncoder encoder(state);
    std::string document;
    std::size_t greatest = 0;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) {
        greatest = std::max(greatest, piece.size());
        document += piece;
    }
    EXPECT_LT(greatest, document.size() / 4);
    EXPECT_EQ(documentOf(decodeSyncDocument(document)), document);
}

}  // namespace
}  // namespace quorvi::test
