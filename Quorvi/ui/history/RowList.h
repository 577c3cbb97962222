#pragma once

#include <QWidget>
#include <vector>

namespace quorvi {

// Widgets one below the other, as high as their content needs. Unlike the toolkit's layouts, which
// measure every widget again when one is added, it only measures what has changed.
class RowList : public QWidget {
public:
    // Begins anew. The widgets stay as they are until they are appended again, or hidden.
    void clear();
    // Shows a widget below the others.
    void append(QWidget* widget, int spaceBefore = 0);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Row {
        QWidget* widget;
        int spaceBefore;
    };
    int place(const Row& row, int top);
    void arrange();

    std::vector<Row> rows_;
    int height_ = 0;
};

}  // namespace quorvi
