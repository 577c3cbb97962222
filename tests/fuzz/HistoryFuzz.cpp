// Decoding any bytes either fails with HistoryFormatError or returns records that survive a round
// trip.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/history/HistoryIndex.h"
#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/history/UsageSummary.h"
#include "QuorviCore/text/Text.h"
#include "tests/support/Written.h"

using namespace quorvi;

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

void readDocument(const std::string& bytes) {
    DictationRecords records;
    try {
        records = HistoryArchive::decode(bytes).records;
    } catch (const HistoryFormatError&) {
        return;
    }
    require(text::isValidUtf8(bytes));
    require(HistoryArchive::decode(test::written(HistoryArchiveEncoder(records))).records ==
            records);

    static const Calendar calendar("Pacific/Apia", "en_US");
    const Date now{700'000'000};
    const auto usage = UsageSummary::of(records.newestFirst(), now, calendar);
    require(usage.dictationCount <= static_cast<std::int64_t>(records.size()));
    require(usage.days.size() == 84);
    require(UsageCostSummary::of(records, UsagePeriod::week, now, calendar).totalUSD() >= 0);
    HistoryIndex index;
    index.update(records);
    const auto query = bytes.substr(0, 2);
    for (const auto position : index.find(query, HistoryIndex::Among::records).positions)
        require(records[position].matches(query));
}

void readRecord(const std::string& bytes) {
    try {
        const auto record = decodeRecord(bytes);
        require(decodeRecord(encodeRecord(record)) == record);
    } catch (const HistoryFormatError&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    readDocument(bytes);
    readRecord(bytes);
    return 0;
}
