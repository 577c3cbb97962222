#include "Quorvi/shell/DesktopColorScheme.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include "Quorvi/ui/design/Colors.h"
#include "tests/support/ui/DesktopQt.h"
#include "tests/support/ui/OffscreenQt.h"

namespace quorvi::test {
namespace {

// The settings portal, on its own connection.
class Portal : public QDBusVirtualObject {
public:
    Portal() {
        bus_.registerVirtualObject(path, this);
        bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~Portal() override { bus_.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop")); }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const auto inner = QVariant::fromValue(QDBusVariant(QVariant::fromValue(scheme)));
        connection.send(message.createReply(QVariant::fromValue(QDBusVariant(inner))));
        return true;
    }
    void change(const QString& key, unsigned value) {
        scheme = value;
        auto signal =
            QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Settings"),
                                       QStringLiteral("SettingChanged"));
        signal << QStringLiteral("org.freedesktop.appearance") << key
               << QVariant::fromValue(QDBusVariant(QVariant::fromValue(value)));
        bus_.send(signal);
    }

    unsigned scheme = 0;

private:
    const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    QDBusConnection bus_ =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
};

bool becomes(bool dark) {
    return inQtLoop([dark] { return isDark(QApplication::palette()) == dark; });
}

TEST(DesktopColorScheme, FollowsTheSettingsPortal) {
    const OffscreenQt qt;
    ASSERT_FALSE(isDark(QApplication::palette()));
    const auto own = QApplication::palette();
    {
        const DesktopColorScheme withoutPortal;
    }
    Portal portal;
    portal.scheme = 1;
    const DesktopColorScheme colours;
    EXPECT_TRUE(becomes(true)) << "asked at the start";
    EXPECT_GT(QApplication::palette().color(QPalette::WindowText).lightnessF(), 0.7F);
    portal.change(QStringLiteral("color-scheme"), 0);
    EXPECT_TRUE(becomes(false));
    EXPECT_TRUE(QApplication::palette() == own) << "no preference";
    portal.change(QStringLiteral("color-scheme"), 1);
    EXPECT_TRUE(becomes(true));
    portal.change(QStringLiteral("contrast"), 0);
    portal.change(QStringLiteral("color-scheme"), 2);
    EXPECT_TRUE(becomes(false));
}

}  // namespace
}  // namespace quorvi::test
