#include "QuorviCore/sync/LocalSnapshot.h"

#include <algorithm>
#include <array>
#include <compare>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "QuorviCore/Error.h"
#include "QuorviCore/base/ColdMemory.h"
#include "QuorviCore/corrections/TextCorrectionCoding.h"
#include "QuorviCore/history/HistoryArchive.h"
#include "QuorviCore/propertylist/PropertyList.h"
#include "QuorviCore/settings/StoredValue.h"

namespace quorvi {

namespace {

using Chunk = DictationRecords::Chunk;

// So many payloads go into the heap. More are those of a first start.
constexpr std::size_t few = 1000;

// Traits of the elements of a list, for the comparison of two lists.
struct RecordTraits {
    using Element = DictationRecord;
    using Key = Uuid;
    struct Hash {
        std::size_t operator()(const Uuid& id) const {
            return std::hash<std::string_view>()(
                {reinterpret_cast<const char*>(id.bytes.data()), id.bytes.size()});
        }
    };
    static const Uuid& key(const DictationRecord& record) { return record.id; }
    static SharedString id(const DictationRecord& record) {
        return LocalSnapshot::historyId(record.id);
    }
    static double date(const DictationRecord& record) {
        return record.date.secondsSinceReferenceDate;
    }
    static bool isRedacted(const DictationRecord& record) { return !record.text; }
    static constexpr bool isRedactedWhenGone = true;
    static bool same(const DictationRecord& a, const DictationRecord& b) { return a == b; }
    static std::optional<SharedString> encode(const DictationRecord& record) {
        try {
            return SharedString(encodeRecord(record));
        } catch (const HistoryFormatError&) {
            return std::nullopt;
        }
    }
};

struct RuleTraits {
    using Element = TextCorrection;
    using Key = std::string;
    using Hash = std::hash<std::string>;
    static const std::string& key(const TextCorrection& rule) { return rule.id; }
    static SharedString id(const TextCorrection& rule) {
        return std::string(syncPrefix::correction) + rule.id;
    }
    static double date(const TextCorrection& rule) {
        return rule.updatedAt.secondsSinceReferenceDate;
    }
    static bool isRedacted(const TextCorrection&) { return false; }
    static constexpr bool isRedactedWhenGone = false;
    // Byte for byte, unlike the rules' own comparison.
    static bool same(const TextCorrection& a, const TextCorrection& b) {
        return a.id == b.id && a.original == b.original && a.replacement == b.replacement &&
               a.isEnabled == b.isEnabled && a.learnedAutomatically == b.learnedAutomatically &&
               a.updatedAt == b.updatedAt;
    }
    static std::optional<SharedString> encode(const TextCorrection& rule) {
        try {
            return SharedString(encodeCorrection(rule));
        } catch (const QuorviError&) {
            return std::nullopt;
        }
    }
};

// Chooses one value from the elements that share an id.
template <class Traits>
class Choice {
public:
    void offer(const typename Traits::Element& element) {
        const double date = Traits::date(element);
        if (payload_ && date < date_) return;
        auto payload = Traits::encode(element);
        if (!payload || (payload_ && date == date_ && *payload <= *payload_)) return;
        payload_ = std::move(payload);
        date_ = date;
        isRedacted_ = Traits::isRedacted(element);
    }
    LocalChange change(SharedString id) const {
        return {std::move(id), payload_, payload_ ? isRedacted_ : Traits::isRedactedWhenGone};
    }

private:
    std::optional<SharedString> payload_;
    double date_ = 0;
    bool isRedacted_ = false;
};

template <class Traits>
using Elements = std::vector<const typename Traits::Element*>;

// Removes the common start and end of two lists.
template <class Traits>
void trim(Elements<Traits>& before, Elements<Traits>& after) {
    const auto same = [](const auto* a, const auto* b) { return Traits::same(*a, *b); };
    const auto ends =
        std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend(), same);
    before.erase(ends.first.base(), before.end());
    after.erase(ends.second.base(), after.end());
    const auto starts = std::ranges::mismatch(before, after, same);
    before.erase(before.begin(), starts.in1);
    after.erase(after.begin(), starts.in2);
}

// Adds the differences between `before` and `after`, the parts of two lists that may differ.
// `forEach` visits every element of the later list.
template <class Traits, class ForEach>
void compare(Elements<Traits> before, Elements<Traits> after, const SyncLedger& ledger,
             ForEach forEach, LocalChanges& changes) {
    trim<Traits>(before, after);
    using Key = typename Traits::Key;
    using Hash = typename Traits::Hash;
    struct Sides {
        Elements<Traits> before, after;
    };
    std::unordered_map<Key, Sides, Hash> sides;
    for (const auto* element : before) sides[Traits::key(*element)].before.push_back(element);
    for (const auto* element : after) sides[Traits::key(*element)].after.push_back(element);

    // Unchanged elements may have the same id as a changed one, but not as a new one that the
    // ledger does not know.
    std::unordered_map<Key, Choice<Traits>, Hash> wanted;
    for (const auto& [key, side] : sides) {
        const auto isUnchanged = std::ranges::is_permutation(
            side.before, side.after,
            [](const auto* a, const auto* b) { return Traits::same(*a, *b); });
        if (isUnchanged) continue;
        auto id = Traits::id(side.after.empty() ? *side.before.front() : *side.after.front());
        if (!side.before.empty() || ledger.baseline(id)) {
            wanted.try_emplace(key);
            continue;
        }
        Choice<Traits> choice;
        for (const auto* element : side.after) choice.offer(*element);
        auto change = choice.change(std::move(id));
        if (change.payload) changes.push_back(std::move(change));
    }
    if (wanted.empty()) return;
    // The ids come from both parts, the values from the whole list.
    forEach([&wanted](const typename Traits::Element& element) {
        const auto found = wanted.find(Traits::key(element));
        if (found != wanted.end()) found->second.offer(element);
    });
    for (const auto& [key, choice] : wanted) {
        const auto& side = sides.at(key);
        changes.push_back(choice.change(
            Traits::id(side.after.empty() ? *side.before.front() : *side.after.front())));
    }
}

// The chunks that only one of two lists has.
struct ChunkDifference {
    std::vector<const Chunk*> before, after;

    ChunkDifference(const DictationRecords& earlier, const DictationRecords& later) {
        if (earlier.isSharedWith(later)) return;
        const auto& a = earlier.parts();
        const auto& b = later.parts();
        // After a new dictation only the first chunk differs.
        const auto same = [](const auto& x, const auto& y) { return x.chunk == y.chunk; };
        const auto ends = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend(), same);
        std::unordered_map<const Chunk*, std::ptrdiff_t> counts;
        for (auto part = a.begin(); part != ends.first.base(); ++part) ++counts[part->chunk.get()];
        for (auto part = b.begin(); part != ends.second.base(); ++part) {
            auto& count = counts[part->chunk.get()];
            if (count > 0)
                --count;
            else
                after.push_back(part->chunk.get());
        }
        for (auto part = a.begin(); part != ends.first.base(); ++part)
            if (auto& count = counts[part->chunk.get()]; count > 0) {
                --count;
                before.push_back(part->chunk.get());
            }
    }

    static Elements<RecordTraits> elements(const std::vector<const Chunk*>& chunks) {
        Elements<RecordTraits> all;
        for (const auto* chunk : chunks)
            for (const auto& record : chunk->records) all.push_back(&record);
        return all;
    }
};

Elements<RuleTraits> elements(const TextCorrections& rules) {
    Elements<RuleTraits> all;
    for (const auto& rule : rules.rules()) all.push_back(&rule);
    return all;
}

template <class Traits, class List, class Visit>
void visitChoices(const List& list, Visit visit) {
    std::unordered_map<typename Traits::Key, Elements<Traits>, typename Traits::Hash> namesakes;
    std::unordered_set<typename Traits::Key, typename Traits::Hash> seen;
    seen.reserve(list.size());
    for (const auto& element : list)
        if (!seen.insert(Traits::key(element)).second) namesakes[Traits::key(element)];
    for (const auto& element : list) {
        if (!namesakes.empty()) {
            const auto found = namesakes.find(Traits::key(element));
            if (found != namesakes.end()) {
                found->second.push_back(&element);
                continue;
            }
        }
        Choice<Traits> choice;
        choice.offer(element);
        visit(choice.change(Traits::id(element)));
    }
    for (const auto& [key, elements] : namesakes) {
        Choice<Traits> choice;
        for (const auto* element : elements) choice.offer(*element);
        visit(choice.change(Traits::id(*elements.front())));
    }
}

SharedString settingId(std::string_view key) {
    return std::string(syncPrefix::setting).append(key);
}

// Visits every value that can be encoded.
template <class Visit>
void visitAll(const LocalSnapshot& snapshot, Visit visit) {
    const auto visitEncoded = [&visit](LocalChange change) {
        if (change.payload) visit(std::move(change));
    };
    visitChoices<RecordTraits>(snapshot.records(), visitEncoded);
    visitChoices<RuleTraits>(snapshot.rules().rules(), visitEncoded);
    for (const auto& [key, value] : snapshot.settings())
        visit(LocalChange{settingId(key), LocalSnapshot::encode(value), false});
}

}  // namespace

LocalSnapshot::LocalSnapshot(DictationRecords records, TextCorrections rules,
                             SettingValues settings)
    : records_(std::move(records)), rules_(std::move(rules)), settings_(std::move(settings)) {}

bool LocalSnapshot::isSharedWith(const LocalSnapshot& other) const {
    return records_.isSharedWith(other.records_) && rules_.isSharedWith(other.rules_) &&
           settings_ == other.settings_;
}

std::size_t LocalSnapshot::distanceFrom(const LocalSnapshot& captured) const {
    const ChunkDifference difference(captured.records_, records_);
    std::size_t count = settings_.size() + captured.settings_.size();
    for (const auto* chunk : difference.before) count += chunk->records.size();
    for (const auto* chunk : difference.after) count += chunk->records.size();
    if (!rules_.isSharedWith(captured.rules_))
        count += rules_.rules().size() + captured.rules_.rules().size();
    return count;
}

LocalChanges LocalSnapshot::changesSince(const LocalSnapshot& captured,
                                         const SyncLedger& ledger) const {
    LocalChanges changes;
    if (!records_.isSharedWith(captured.records_)) {
        const ChunkDifference difference(captured.records_, records_);
        compare<RecordTraits>(
            ChunkDifference::elements(difference.before),
            ChunkDifference::elements(difference.after), ledger,
            [this](auto visit) { std::ranges::for_each(records_, visit); }, changes);
    }
    if (!rules_.isSharedWith(captured.rules_))
        compare<RuleTraits>(
            elements(captured.rules_), elements(rules_), ledger,
            [this](auto visit) { std::ranges::for_each(rules_.rules(), visit); }, changes);

    for (const auto& [key, value] : captured.settings_)
        if (!settings_.contains(key)) changes.push_back({settingId(key), std::nullopt, false});
    for (const auto& [key, value] : settings_) {
        const auto before = captured.settings_.find(key);
        if (before == captured.settings_.end() || before->second != value)
            changes.push_back({settingId(key), encode(value), false});
    }
    return changes;
}

LocalChanges LocalSnapshot::changesFrom(const SyncLedger& ledger) const {
    LocalChanges changes;
    ColdStrings cold;
    SharedStringSet live;
    live.reserve(records_.size() + rules_.rules().size() + settings_.size());
    visitAll(*this, [&](LocalChange change) {
        live.insert(change.id);
        const auto* before = ledger.baseline(change.id);
        if (before && *before == *change.payload) return;
        if (changes.size() >= few) change.payload = cold.keep(*change.payload);
        changes.push_back(std::move(change));
    });
    for (const auto& [id, item] : ledger.items())
        if (ledger.baseline(item) && !live.contains(id))
            changes.push_back(LocalChange::of(id, std::nullopt));
    for (const auto& [id, held] : ledger.differences())
        if (held.payload && !live.contains(id) && !ledger.item(id))
            changes.push_back(LocalChange::of(id, std::nullopt));
    return changes;
}

SharedString LocalSnapshot::encode(const SettingValue& value) {
    auto plain =
        std::visit([](const auto& v) { return PropertyList{PropertyList::Value(v)}; }, value);
    PropertyList::Dictionary entry;
    entry.emplace("value", std::move(plain));
    return PropertyList{PropertyList::Value(std::move(entry))}.toBinary();
}

std::optional<SettingValue> LocalSnapshot::decode(std::string_view payload) {
    const auto list = PropertyList::fromBinary(payload);
    const auto* fields = list ? std::get_if<PropertyList::Dictionary>(&list->value) : nullptr;
    if (fields == nullptr) return std::nullopt;
    const auto entry = fields->find("value");
    if (entry == fields->end()) return std::nullopt;
    return settingValueOf(entry->second);
}

SharedString LocalSnapshot::historyId(const Uuid& id) {
    std::array<char, syncPrefix::history.size() + 36> text;
    const auto digits = id.characters();
    std::ranges::copy(digits, std::ranges::copy(syncPrefix::history, text.begin()).out);
    return std::string_view(text.data(), text.size());
}

}  // namespace quorvi
