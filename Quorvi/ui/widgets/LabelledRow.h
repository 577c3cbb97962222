#pragma once

#include <QHBoxLayout>
#include <QString>
#include <initializer_list>

namespace quorvi {

// A setting on one line: a label, which names the first widget for screen readers, and the widgets
// at the end.
QHBoxLayout* labelledRow(const QString& label, std::initializer_list<QWidget*> widgets);

}  // namespace quorvi
