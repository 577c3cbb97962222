#pragma once

#include <random>
#include <string>

#include "QuorviCore/sync/SyncDocument.h"
#include "tests/support/Written.h"

namespace quorvi::test {

// The whole document of a state.
inline std::string documentOf(const SyncState& state) {
    return written(SyncDocumentEncoder(state));
}

// Does the same random things to whatever has a SyncArchive's functions.
template <class Archive>
void changeAtRandom(Archive& archive, std::mt19937& random) {
    const auto below = [&random](unsigned limit) {
        return static_cast<unsigned>(random() % limit);
    };
    const SharedString id = "setting:" + std::to_string(below(40));
    const SharedString value =
        std::to_string(below(6)) + std::string(below(3) ? 3 : 3'000, static_cast<char>(below(256)));
    switch (below(12)) {
        case 0:
        case 1: {
            const LocalChanges changes{{id, value, false}, {"setting:\"é\n", value, false}};
            for (const auto& changed : archive.capture(changes, below(9) == 0, {1e6}))
                archive.addPending(changed);
            break;
        }
        case 2:
            archive.capture(LocalChanges{{id, std::nullopt, false}}, false, {1e6});
            break;
        case 3:
        case 4:
            archive.merge({id, below(9) ? std::optional(value) : std::nullopt,
                           std::int64_t{below(1000)}, "other device", below(2) == 0});
            break;
        case 5:
            archive.rebaseline();
            break;
        case 6:
            archive.setRecord(id, value);
            break;
        case 7:
            archive.removeRecord(id);
            archive.removePending(id);
            break;
        case 8:
            archive.setEngineState(below(3) ? std::optional(value) : std::nullopt);
            break;
        case 9:
            archive.setOwner("owner " + std::to_string(below(9)));
            archive.setInitialFetchComplete(below(2) == 0);
            break;
        case 10:
            archive.setLastSynced({below(1000) / 7.0});
            break;
        default:
            archive.count("event" + std::to_string(below(3)), below(3));
            break;
    }
}

}  // namespace quorvi::test
