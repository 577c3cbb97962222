#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QPalette>
#include <optional>

namespace quorvi {

// Follows the desktop's choice of dark or light windows where the toolkit does not: the settings
// portal tells it on GNOME and others, while the toolkit only knows the palette of a theme of its
// own. What is dark or light already stays as the desktop has it. Asks once, waits for nobody, and
// is told of changes. Main thread; ends before the application.
class DesktopColorScheme : public QObject {
    Q_OBJECT

public:
    DesktopColorScheme();

private Q_SLOTS:
    void changed(const QDBusMessage& signal);

private:
    void follow(const QVariant& value);

    std::optional<QPalette> own_;  // the toolkit's, while another one is in force
};

}  // namespace quorvi
