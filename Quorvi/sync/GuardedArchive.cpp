#include "Quorvi/sync/GuardedArchive.h"

#include <exception>
#include <utility>

namespace quorvi {

Task<bool> GuardedArchive::open(std::stop_token stop) {
    try {
        auto opening = SyncArchive::open(environment_, stop);
        archive_ = co_await opening;
    } catch (const std::exception&) {
        hasFailed_ = true;
    }
    co_return !hasFailed_;
}

void GuardedArchive::close() {
    isClosed_ = true;
    if (archive_ && !hasFailed_) archive_->flush();
}

void GuardedArchive::closeInBackground() {
    isClosed_ = true;
    if (archive_) archive_->closeInBackground();
    archive_.reset();
}

void GuardedArchive::persist(std::function<void()> saved) {
    if (!archive_ || hasFailed_) return;
    archive_->persist([this, saved = std::move(saved)](bool isSaved) {
        note(isSaved);
        if (isSaved && saved) saved();
    });
}

Task<void> GuardedArchive::persisted(std::stop_token stop) {
    auto persisting = archive_->persist(stop);
    const bool saved = co_await persisting;
    note(saved);
}

void GuardedArchive::note(bool saved) {
    if (hasFailed_) return;
    if (saved) return onSaved();
    hasFailed_ = true;
    onFailure();
}

}  // namespace quorvi
