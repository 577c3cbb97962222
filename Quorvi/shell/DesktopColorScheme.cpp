#include "Quorvi/shell/DesktopColorScheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>

#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString scheme = QStringLiteral("color-scheme");

constexpr unsigned prefersDark = 1;
constexpr unsigned prefersLight = 2;

// Greys, from which the design derives all other colours.
QPalette plain(bool dark) {
    QPalette palette = dark ? QPalette(QColor(0x2B, 0x2D, 0x31), QColor(0x24, 0x26, 0x2A))
                            : QPalette(QColor(0xF2, 0xF3, 0xF5), QColor(0xF5, 0xF6, 0xF8));
    palette.setColor(QPalette::Base, dark ? QColor(0x1E, 0x20, 0x23) : QColor(Qt::white));
    palette.setColor(QPalette::Highlight,
                     dark ? QColor(0x62, 0x9D, 0xF2) : QColor(0x33, 0x6E, 0xD4));
    return refined(palette);
}

}  // namespace

DesktopColorScheme::DesktopColorScheme() {
    auto bus = QDBusConnection::sessionBus();
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(changed(QDBusMessage)));
    auto question =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    question << appearance << scheme;
    auto* asking = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(asking, &QDBusPendingCallWatcher::finished, this, [this, asking] {
        const QDBusPendingReply<QDBusVariant> reply = *asking;
        if (reply.isValid()) follow(reply.value().variant());
        asking->deleteLater();
    });
}

void DesktopColorScheme::changed(const QDBusMessage& signal) {
    const auto arguments = signal.arguments();
    if (arguments.size() == 3 && arguments[0] == appearance && arguments[1] == scheme)
        follow(arguments[2]);
}

void DesktopColorScheme::follow(const QVariant& value) {
    // The portal wraps its answer in two variants.
    auto inner = value;
    while (inner.canConvert<QDBusVariant>()) inner = inner.value<QDBusVariant>().variant();
    const auto wanted = inner.toUInt();
    const QPalette own = own_.value_or(QApplication::palette());
    const bool differs = wanted == (isDark(own) ? prefersLight : prefersDark);
    if (differs == own_.has_value()) return;
    QApplication::setPalette(differs ? plain(wanted == prefersDark) : own);
    own_ = differs ? std::optional(own) : std::nullopt;
}

}  // namespace quorvi
