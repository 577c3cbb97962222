#pragma once

#include <QBoxLayout>
#include <QWidget>
#include <initializer_list>

namespace quorvi {

// What screen readers take for a group, by its accessible name.
class Group : public QWidget {};

// A rounded, filled container; its rows go into content(). The group has the name of its heading.
class Card : public Group {
public:
    Card();
    // With a heading and, before it, a symbol; its name as in Symbols.h.
    Card(const QString& heading, const char* symbol);

    QVBoxLayout& content() { return content_; }
    // The row of the heading, for what stands at its end.
    QHBoxLayout& header() { return *header_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout& content_;
    QHBoxLayout* header_ = nullptr;
};

// A heading below its eyebrow.
QVBoxLayout* cardTitle(QWidget* eyebrow, QWidget* heading);

// A row of widgets; the stretch goes where a nullptr stands.
QHBoxLayout* row(std::initializer_list<QWidget*> widgets);

// A thin line between the parts of a card.
QWidget* divider();

}  // namespace quorvi
