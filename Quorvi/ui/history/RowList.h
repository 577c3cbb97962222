#pragma once

#include <QWidget>
#include <vector>

namespace quorvi {

// A vertical list of widgets. Unlike QVBoxLayout, which measures every widget again when one is
// added, it measures only those that have changed.
class RowList : public QWidget {
public:
    // Empties the list. The widgets keep their state until they are appended again or hidden.
    void clear();
    // Shows a widget at the end.
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
