#pragma once

#include <QBoxLayout>
#include <QWidget>
#include <initializer_list>

#include "Quorvi/ui/design/AccessibleRoles.h"

namespace quorvi {

// A rounded, filled container for rows. Its accessible name is its heading.
class Card : public Group {
public:
    Card();
    // With a heading and a symbol before it; see Symbols.h.
    Card(const QString& heading, const char* symbol);

    QVBoxLayout& content() { return content_; }
    // The row of the heading, to add widgets at its end.
    QHBoxLayout& header() { return *header_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout& content_;
    QHBoxLayout* header_ = nullptr;
};

// An eyebrow above its heading.
QVBoxLayout* cardTitle(QWidget* eyebrow, QWidget* heading);

// A row of widgets; a nullptr adds a stretch.
QHBoxLayout* row(std::initializer_list<QWidget*> widgets);

// A thin horizontal line.
QWidget* divider();

}  // namespace quorvi
