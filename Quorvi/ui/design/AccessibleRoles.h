#pragma once

#include <QWidget>

namespace quorvi {

// A group for screen readers; named by its accessible name.
class Group : public QWidget {};

// Gives headings, groups and pickers their roles for screen readers. Call once, before the first
// widget.
void installAccessibleRoles();

}  // namespace quorvi
