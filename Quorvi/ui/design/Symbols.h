#pragma once

#include <QIcon>
#include <QPixmap>

#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

// A symbol by name, such as "doc.on.doc" or "trash"; Symbols.cpp lists them. It is coloured when it
// is drawn, so it follows a change between light and dark. Returns an empty icon for an unknown
// name. Main thread.
QIcon symbolIcon(const char* name, ColorRole role = ColorRole::ink);

// The same as a pixmap of `size` logical pixels for a device pixel ratio.
QPixmap symbolPixmap(const char* name, const QColor& color, int size, qreal ratio);

}  // namespace quorvi
