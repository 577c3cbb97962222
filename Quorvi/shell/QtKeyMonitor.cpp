#include "Quorvi/shell/QtKeyMonitor.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <utility>

#include "Quorvi/platform/linux/xkb/KeyMap.h"

namespace quorvi {

namespace {

std::optional<std::string> characters(const QKeyEvent& event) {
    if (event.key() == 0 || event.key() == Qt::Key_unknown) return std::nullopt;
    auto text = QKeySequence(event.key()).toString(QKeySequence::NativeText).toStdString();
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

Subscription QtKeyMonitor::observe(Handler handler) {
    handler_ = std::make_shared<Handler>(std::move(handler));
    held_.clear();
    QCoreApplication::instance()->installEventFilter(this);
    return Subscription(
        std::shared_ptr<void>(nullptr, [this, weak = std::weak_ptr(handler_)](void*) {
            if (weak.expired() || weak.lock() != handler_) return;
            handler_.reset();
            QCoreApplication::instance()->removeEventFilter(this);
        }));
}

bool QtKeyMonitor::eventFilter(QObject* receiver, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:
            // Otherwise a shortcut of the window would consume the key.
            event->accept();
            return true;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            // Events reach the window first and then the focused widget.
            if (!receiver->isWindowType()) return false;
            return handle(static_cast<const QKeyEvent&>(*event), event->type() == QEvent::KeyPress);
        default:
            return false;
    }
}

bool QtKeyMonitor::handle(const QKeyEvent& event, bool isPress) {
    const auto position = static_cast<XKeycode>(event.nativeScanCode());
    auto code = keyCodeOfKey(position, event.nativeVirtualKey());
    if (const auto found = held_.find(position); found != held_.end()) code = found->second;
    const bool isModifier = changesFlags(code);
    if (isModifier && isPress) held_[position] = code;
    if (isModifier && !isPress) held_.erase(position);
    if (!isModifier && !isPress) return false;

    LocalKeyEvent local{.keyCode = code};
    for (const auto& [keycode, held] : held_) local.flags |= flagsOfKey(held);
    if (isModifier)
        local.type = LocalKeyEvent::Type::flagsChanged;
    else
        local.characters = characters(event);
    const auto handler = handler_;  // may end the observation
    return handler && (*handler)(local);
}

}  // namespace quorvi
