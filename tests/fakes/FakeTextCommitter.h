#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Quorvi/platform/TextCommitter.h"
#include "QuorviCore/async/Async.h"

namespace quorvi::test {

// Answers at once, and gives the texts to `onCommit` in place of the application.
class FakeTextCommitter : public TextCommitter {
public:
    explicit FakeTextCommitter(Scheduler& scheduler) : scheduler_(scheduler) {}

    Task<std::unique_ptr<CommitField>> focusedField(Duration, std::stop_token stop) override {
        ++asked;
        auto pause = sleepFor(scheduler_, Duration::zero(), std::move(stop));
        if (kind) co_await pause;
        if (!kind) co_return nullptr;
        co_return std::make_unique<Field>(*this);
    }

    std::optional<CommitField::Kind> kind;  // of the focused field, if it takes text
    CommitField::Delivery delivery = CommitField::Delivery::sent;
    std::function<void(const std::string&)> onCommit;
    std::vector<std::string> commits;
    int asked = 0;
    int uses = 0;  // fields that live

private:
    class Field : public CommitField {
    public:
        explicit Field(FakeTextCommitter& owner) : owner_(owner) { ++owner_.uses; }
        ~Field() override { --owner_.uses; }
        Kind kind() const override { return *owner_.kind; }
        Task<Delivery> commit(std::string text) override {
            if (owner_.delivery != Delivery::nothing) {
                owner_.commits.push_back(text);
                if (owner_.onCommit) owner_.onCommit(text);
            }
            co_return owner_.delivery;
        }

    private:
        FakeTextCommitter& owner_;
    };

    Scheduler& scheduler_;
};

}  // namespace quorvi::test
