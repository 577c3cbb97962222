#include "Quorvi/sync/SyncArchive.h"

#include "Quorvi/sync/SyncArchiveWriter.h"

namespace quorvi {

namespace {

using namespace std::chrono_literals;

// How long nothing must have been written before the whole document is rewritten.
constexpr auto idleTime = 30s;

// Touched ids are gathered in portions, so that no turn gathers many.
constexpr std::size_t portion = 512;

struct Loaded {
    std::shared_ptr<SyncArchiveWriter> writer;
    SyncState state;
};

Loaded load(const SyncArchive::Environment& environment) {
    auto writer = std::make_shared<SyncArchiveWriter>(environment.files, environment.journals,
                                                      environment.path, environment.wholeUpTo,
                                                      environment.flushStores);
    auto state = writer->copy();
    return {std::move(writer), std::move(state)};
}

Task<bool> outcomeOf(Promise<bool> promise, std::stop_token stop) {
    auto future = promise.future(std::move(stop));
    co_return co_await future;
}

}  // namespace

Task<std::unique_ptr<SyncArchive>> SyncArchive::open(Environment environment,
                                                     std::stop_token stop) {
    auto loading = quorvi::inBackground(
        environment.executor, environment.scheduler, [environment] { return load(environment); },
        std::move(stop));
    auto loaded = co_await loading;
    std::unique_ptr<SyncArchive> archive(
        new SyncArchive(environment, std::move(loaded.writer), std::move(loaded.state)));
    co_return std::move(archive);
}

SyncArchive::SyncArchive(Environment environment, std::shared_ptr<SyncArchiveWriter> writer,
                         SyncState state)
    : environment_(std::move(environment)), writer_(std::move(writer)), state_(std::move(state)) {}

SyncArchive::~SyncArchive() {
    if (writer_) writer_->close();
}

std::vector<SharedString> SyncArchive::capture(std::span<const LocalChange> changes, bool seed,
                                               Date now) {
    auto ids = state_.ledger.capture(changes, seed, now);
    for (const auto& change : changes) touch(change.id);
    return ids;
}

const SyncItem& SyncArchive::merge(const SyncItem& incoming) {
    const auto& held = state_.ledger.merge(incoming);
    touch(held.id);
    return held;
}

void SyncArchive::adopt(const LocalChange& value) {
    state_.ledger.adopt(value);
    touch(value.id);
}

void SyncArchive::rebaseline() {
    auto old = std::make_shared<SyncLedger::Differences>(state_.ledger.rebaseline());
    environment_.executor.run([old = std::move(old)]() mutable { old.reset(); });
    rebaselined_ = changed_ = true;
}

void SyncArchive::setOwner(SharedString owner) {
    state_.owner = std::move(owner);
    changed_ = true;
}

void SyncArchive::setCloud(SharedString address) {
    state_.cloud = std::move(address);
    changed_ = true;
}

// Large sets are made and destroyed on the executor.
void SyncArchive::beginAnew(SharedStringSet ids) {
    gather();
    ids.insert(state_.pending.begin(), state_.pending.end());
    const auto old = std::make_shared<SyncState>();
    old->records.swap(state_.records);
    old->pending.swap(state_.pending);
    environment_.executor.run([old] {});
    state_.pending = std::move(ids);
    state_.engineState.reset();
    state_.initialFetchComplete = false;
    state_.lastSynced.reset();
    begunAnew_ = engineStateChanged_ = changed_ = true;
}

void SyncArchive::setEngineState(std::optional<SharedString> state) {
    state_.engineState = std::move(state);
    engineStateChanged_ = changed_ = true;
}

void SyncArchive::setRecord(const SharedString& id, SharedString record) {
    const auto known = state_.records.find(id);
    if (known != state_.records.end() && known->second == record) return;
    state_.records.insert_or_assign(id, std::move(record));
    touch(id);
}

void SyncArchive::removeRecord(const SharedString& id) {
    if (state_.records.erase(id) > 0) touch(id);
}

void SyncArchive::addPending(const SharedString& id) {
    if (state_.pending.insert(id).second) touch(id);
}

void SyncArchive::removePending(const SharedString& id) {
    if (state_.pending.erase(id) > 0) touch(id);
}

void SyncArchive::setInitialFetchComplete(bool complete) {
    state_.initialFetchComplete = complete;
    changed_ = true;
}

void SyncArchive::setLastSynced(Date date) {
    state_.lastSynced = date;
    timeChanged_ = true;
}

void SyncArchive::count(std::string_view event, std::int64_t times) {
    if (!state_.diagnostics) state_.diagnostics.emplace();
    auto found = state_.diagnostics->find(event);
    if (found == state_.diagnostics->end()) found = state_.diagnostics->emplace(event, 0).first;
    found->second += times;
    changed_ = true;
}

void SyncArchive::touch(const SharedString& id) {
    touched_.insert(id);
    if (touched_.size() >= portion) gather();
}

void SyncArchive::gather() {
    if (touched_.empty() && !changed_ && !timeChanged_) return;
    SyncDelta delta{
        .rebaselined = std::exchange(rebaselined_, false),
        .begunAnew = std::exchange(begunAnew_, false),
        .clock = state_.ledger.clock(),
        .owner = state_.owner,
        .cloud = state_.cloud,
        .engineStateChanged = engineStateChanged_,
        .initialFetchComplete = state_.initialFetchComplete,
        .lastSynced = state_.lastSynced,
        .diagnostics = state_.diagnostics,
    };
    if (std::exchange(engineStateChanged_, false)) delta.engineState = state_.engineState;
    delta.values.reserve(touched_.size());
    for (const auto& id : touched_) delta.values.push_back(SyncDelta::valueOf(state_, id));
    touched_.clear();
    changed_ = timeChanged_ = false;
    gathered_.push_back(std::move(delta));
}

void SyncArchive::handOverAll() {
    gather();
    if (!gathered_.empty()) writer_->push(std::exchange(gathered_, {}));
}

void SyncArchive::persist(std::function<void(bool saved)> done) {
    handOverAll();
    idle_.cancel();
    auto finish = lifetime_.guard([this, done = std::move(done)](bool saved) {
        if (saved) renewDocument();
        done(saved);
    });
    environment_.executor.run([writer = writer_, &scheduler = environment_.scheduler,
                               finish = std::move(finish)]() mutable {
        const bool saved = writer->write();
        scheduler.post([saved, finish = std::move(finish)] { finish(saved); });
    });
}

// Starts a rewrite of the document if its journal has grown long.
void SyncArchive::renewDocument() {
    const auto write = [this](bool regardless) {
        environment_.executor.run(
            [writer = writer_, regardless] { writer->writeDocument(regardless); });
    };
    const auto need = writer_->needsDocument();
    if (need == SyncArchiveWriter::Need::now) write(true);
    if (need == SyncArchiveWriter::Need::whenIdle)
        idle_ = environment_.scheduler.after(idleTime, [write] { write(false); });
}

Task<bool> SyncArchive::persist(std::stop_token stop) {
    Promise<bool> promise(environment_.scheduler);
    persist([promise](bool saved) mutable { promise.resolve(saved); });
    return outcomeOf(std::move(promise), std::move(stop));
}

bool SyncArchive::flush() {
    handOverAll();
    const bool saved = writer_->write();
    if (saved) writer_->writeDocument(true);
    return saved;
}

void SyncArchive::closeInBackground() {
    handOverAll();
    environment_.executor.run([writer = std::move(writer_)] {
        writer->write();
        writer->close();
    });
}

void SyncArchive::look(SyncArchiveWriter& writer,
                       const std::function<void(const SyncState&)>& work) {
    writer.look(work);
}

Task<SharedStringSet> SyncArchive::idsInBackground(std::stop_token stop) {
    return inBackground(
        [](const SyncState& state) {
            SharedStringSet ids;
            ids.reserve(state.ledger.items().size());
            for (const auto& [id, item] : state.ledger.items()) ids.insert(id);
            return ids;
        },
        std::move(stop));
}

Task<LocalChanges> SyncArchive::changesOf(LocalSnapshot now, std::stop_token stop) {
    return inBackground(
        [now = std::move(now)](const SyncState& state) { return now.changesFrom(state.ledger); },
        std::move(stop));
}

}  // namespace quorvi
