#include "Quorvi/platform/linux/wayland/commit/InputMethodCommitter.h"

#include <optional>
#include <string_view>
#include <utility>

#include "QuorviCore/async/Future.h"
#include "QuorviCore/text/Pieces.h"

namespace quorvi {
namespace {

// A field changes when it has taken a piece, which may cross the next.
constexpr int mostRefusals = 100;
// A message of the protocol has room for 4,096 bytes.
constexpr std::size_t longestPiece = 3000;

}  // namespace

// One use of the input method, on the input's thread. `onField` is told the field's kind once, or
// that the field takes no text.
class InputMethodCommitter::Use : public std::enable_shared_from_this<Use> {
public:
    using Kind = CommitField::Kind;
    using Delivery = CommitField::Delivery;
    using OnField = std::function<void(std::optional<Kind>)>;

    void begin(WaylandInput::Session* session, OnField onField) {
        if (!session) return onField(std::nullopt);
        onField_ = std::move(onField);
        hasEntered_ = true;
        session->method.enter();
        session->method.observe([weak = weak_from_this(), session] {
            const auto self = weak.lock();
            return self && self->look(session->method);
        });
    }

    Delivery commit(WaylandInput::Session* session, std::string_view text) {
        auto reached = Delivery::nothing;  // if the rest does not go out
        int refusals = 0;
        while (!text.empty()) {
            if (!session || !hasFocus(session->method) || refusals > mostRefusals) return reached;
            const auto piece = text::piece(text, longestPiece);
            const auto isTaken = session->method.commit(piece);
            if (!isTaken) return Delivery::uncertain;
            if (!*isTaken) {
                ++refusals;
                continue;
            }
            reached = Delivery::uncertain;
            text.remove_prefix(piece.size());
        }
        return hasFocus(session->method) ? Delivery::sent : Delivery::uncertain;
    }

    void end(WaylandInput::Session* session) {
        onField_ = nullptr;
        if (session && std::exchange(hasEntered_, false)) session->method.leave();
    }

private:
    // Returns whether it wants to be told more.
    bool look(const InputMethod& method) {
        if (!onField_) return false;
        const auto& field = method.field();
        if (!method.isUnavailable() && !field.isActive) return true;
        activation_ = method.activation();
        const auto onField = std::exchange(onField_, nullptr);
        if (method.isUnavailable())
            onField(std::nullopt);
        else
            onField(field.isSecret()     ? Kind::secret
                    : field.isTerminal() ? Kind::terminal
                                         : Kind::text);
        return false;
    }

    bool hasFocus(const InputMethod& method) const {
        return method.field().isActive && method.activation() == activation_;
    }

    OnField onField_;
    bool hasEntered_ = false;
    std::uint64_t activation_ = 0;  // the one that made the field known
};

class InputMethodCommitter::Field final : public CommitField {
public:
    Field(Scheduler& scheduler, WaylandInput& input)
        : scheduler_(scheduler), input_(input), use_(std::make_shared<Use>()) {}
    ~Field() override {
        input_.run([use = use_](WaylandInput::Session* session) { use->end(session); });
    }

    // Returns whether a field takes text.
    Task<bool> find(Duration limit, std::stop_token stop) {
        Promise<std::optional<Kind>> promise(scheduler_);
        auto future = promise.future(std::move(stop));
        input_.run([use = use_, promise](WaylandInput::Session* session) {
            use->begin(session,
                       [promise](std::optional<Kind> kind) mutable { promise.resolve(kind); });
        });
        const auto timer =
            scheduler_.after(limit, [promise]() mutable { promise.resolve(std::nullopt); });
        const auto kind = co_await future;
        if (kind) kind_ = *kind;
        co_return kind.has_value();
    }

    Kind kind() const override { return kind_; }

    Task<Delivery> commit(std::string text) override {
        Promise<Delivery> promise(scheduler_);
        auto future = promise.future();
        input_.run(
            [use = use_, promise, text = std::move(text)](WaylandInput::Session* session) mutable {
                promise.resolve(use->commit(session, text));
            });
        co_return co_await future;
    }

private:
    Scheduler& scheduler_;
    WaylandInput& input_;
    const std::shared_ptr<Use> use_;
    Kind kind_ = Kind::text;
};

Task<std::unique_ptr<CommitField>> InputMethodCommitter::focusedField(Duration limit,
                                                                      std::stop_token stop) {
    auto field = std::make_unique<Field>(scheduler_, input_);
    auto finding = field->find(limit, std::move(stop));
    const bool isFound = co_await finding;
    if (!isFound) co_return nullptr;
    co_return std::move(field);
}

}  // namespace quorvi
