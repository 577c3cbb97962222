#pragma once

#include <QString>

namespace quorvi {

// Shows a notice by the desktop's notification service, which never takes the focus. Nothing
// happens on a desktop without one. Main thread; returns at once.
void showNotice(const QString& title, const QString& text);

}  // namespace quorvi
