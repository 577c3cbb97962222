#include "Quorvi/shell/DesktopNotice.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QVariantMap>

namespace quorvi {

// The program's lasting connection: some desktops take a notice away when its sender leaves the
// bus.
void showNotice(const QString& title, const QString& text) {
    constexpr uint replacesNone = 0;
    constexpr int desktopsOwnTime = -1;
    auto notify = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                                 QStringLiteral("/org/freedesktop/Notifications"),
                                                 QStringLiteral("org.freedesktop.Notifications"),
                                                 QStringLiteral("Notify"));
    notify << QStringLiteral("Quorvi") << replacesNone << QGuiApplication::desktopFileName()
           << title << text << QStringList() << QVariantMap() << desktopsOwnTime;
    QDBusConnection::sessionBus().asyncCall(notify);
}

}  // namespace quorvi
