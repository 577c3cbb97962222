#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QPalette>
#include <optional>

namespace quorvi {

// Follows the desktop's preference for dark or light windows through the settings portal, since
// Qt 6.4 only knows the palette of its platform theme. A palette that already matches is kept.
// Asynchronous. Main thread; ends before the application.
class DesktopColorScheme : public QObject {
    Q_OBJECT

public:
    DesktopColorScheme();

private Q_SLOTS:
    void changed(const QDBusMessage& signal);

private:
    void follow(const QVariant& value);

    std::optional<QPalette> own_;  // Qt's palette while it is replaced
};

}  // namespace quorvi
