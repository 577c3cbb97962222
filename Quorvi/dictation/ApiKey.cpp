#include "Quorvi/dictation/ApiKey.h"

#include <utility>

#include "QuorviCore/Error.h"

namespace quorvi {

void ApiKey::refresh() {
    const bool isThere = store_.hasKey();
    if (std::exchange(isThere_, isThere) != isThere) changed();
}

Task<bool> ApiKey::save(std::string key) {
    auto saving = store_.save(std::move(key));
    auto reporting = report(std::move(saving), say::apiKeySaved(), true);
    co_return co_await reporting;
}

Task<void> ApiKey::remove() {
    auto removing = store_.remove();
    auto reporting = report(std::move(removing), say::apiKeyRemoved(), false);
    co_await reporting;
}

Task<bool> ApiKey::setSync(bool on) {
    auto changing = store_.setSyncEnabled(on);
    auto reporting =
        report(std::move(changing), on ? say::apiKeySyncEnabled() : say::apiKeySyncDisabled(),
               std::nullopt);
    co_return co_await reporting;
}

Task<bool> ApiKey::report(Task<void> operation, Message success,
                          std::optional<bool> isThereAfterwards) {
    bool succeeded = true;
    try {
        co_await operation;
        isThere_ = isThereAfterwards.value_or(isThere_);
        message_ = std::move(success);
    } catch (const std::exception& error) {
        succeeded = false;
        message_ = messageOf(error);
    }
    changed();
    co_return succeeded;
}

}  // namespace quorvi
