#pragma once

#include <QIcon>
#include <QPixmap>

#include "Quorvi/ui/design/Colors.h"

namespace quorvi {

// The symbols of the interface, by name, as "doc.on.doc" or "trash"; see Symbols.cpp. They take on
// their colour when they are drawn, so they follow the desktop from light to dark. An unknown name
// yields an empty icon. Main thread.
QIcon symbolIcon(const char* name, ColorRole role = ColorRole::ink);

// The same as a picture of so many logical pixels, for a screen of this many pixels for each.
QPixmap symbolPixmap(const char* name, const QColor& color, int size, qreal ratio);

}  // namespace quorvi
