#pragma once

#include <QBoxLayout>
#include <QScrollArea>

namespace quorvi {

// A page of the window: a centred column of cards that scrolls. Scrolls to the widget that gets the
// focus.
class Page : public QScrollArea {
public:
    // The eyebrow and the subtitle may be empty.
    Page(const QString& eyebrow, const QString& title, const QString& subtitle);

    // The layout of the cards.
    QVBoxLayout& column() { return column_; }
    void add(QWidget* widget) { column_.addWidget(widget); }

private:
    QVBoxLayout& column_;
};

}  // namespace quorvi
