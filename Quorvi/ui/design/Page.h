#pragma once

#include <QBoxLayout>
#include <QScrollArea>

namespace quorvi {

// A page of the window: one column of cards that scrolls when it is too high, centred when there is
// more room than it needs. What gets the keyboard is scrolled to, however it gets it.
class Page : public QScrollArea {
public:
    // The eyebrow and the subtitle may be empty.
    Page(const QString& eyebrow, const QString& title, const QString& subtitle);

    // Where the cards go, top to bottom.
    QVBoxLayout& column() { return column_; }
    void add(QWidget* widget) { column_.addWidget(widget); }

private:
    QVBoxLayout& column_;
};

}  // namespace quorvi
