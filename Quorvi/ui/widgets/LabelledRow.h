#pragma once

#include <QHBoxLayout>
#include <QLineEdit>
#include <QString>
#include <initializer_list>

namespace quorvi {

// A setting on one line: a label, which names the first widget for screen readers, and the widgets
// at the end.
QHBoxLayout* labelledRow(const QString& label, std::initializer_list<QWidget*> widgets);

// Adds a field with its label above it and, if given, a widget beside it. `example` is shown while
// it is empty.
QLineEdit* addLabelledField(QBoxLayout& layout, const QString& label, const QString& example,
                            QWidget* beside = nullptr);

}  // namespace quorvi
