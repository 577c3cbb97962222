#pragma once

#include <QHBoxLayout>
#include <QString>
#include <initializer_list>

namespace quorvi {

// A setting in one line: its label, which names the first widget, and the widgets at the end.
QHBoxLayout* labelledRow(const QString& label, std::initializer_list<QWidget*> widgets);

}  // namespace quorvi
