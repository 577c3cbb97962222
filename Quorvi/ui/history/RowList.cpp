#include "Quorvi/ui/history/RowList.h"

#include <QEvent>
#include <QLayout>
#include <QResizeEvent>

namespace quorvi {

namespace {

// A layout caches its height for a width until its content changes.
int heightOf(const QWidget& widget, int width) {
    if (const auto* layout = widget.layout(); layout && layout->hasHeightForWidth())
        return layout->totalHeightForWidth(width);
    if (widget.hasHeightForWidth()) return widget.heightForWidth(width);
    return widget.sizeHint().height();
}

}  // namespace

void RowList::clear() {
    rows_.clear();
    height_ = 0;
}

void RowList::append(QWidget* widget, int spaceBefore) {
    if (widget->parentWidget() != this) widget->setParent(this);
    rows_.push_back({widget, spaceBefore});
    height_ = place(rows_.back(), height_);
    widget->setVisible(true);
    setFixedHeight(height_);
}

int RowList::place(const Row& row, int top) {
    top += row.spaceBefore;
    const int height = heightOf(*row.widget, width());
    row.widget->setGeometry(0, top, width(), height);
    return top + height;
}

void RowList::arrange() {
    height_ = 0;
    for (const auto& row : rows_) height_ = place(row, height_);
    setFixedHeight(height_);
}

void RowList::resizeEvent(QResizeEvent* event) {
    if (event->oldSize().width() != event->size().width()) arrange();
}

bool RowList::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) arrange();
    return QWidget::event(event);
}

}  // namespace quorvi
