#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <vector>

class QLabel;
class QLayout;

namespace quorvi::test {

// What can be seen in a widget, as lines: texts as they stand, [buttons], (switches), <pickers>,
// and {fields}; what is disabled is marked with a "-". In reading order.
class SeenWidgets {
public:
    explicit SeenWidgets(const QWidget& root) : root_(root) {}

    QStringList lines() const;

    // The texts that are cut off, or that lie outside of what the page can scroll to.
    QStringList clipped() const;

    // The names of what Tab stops at: in reading order, and as Tab goes.
    QStringList stopsAsRead() const;
    QStringList stopsOfTab() const;

    template <class T>
    T* named(const QString& name) const {
        for (auto* widget : root_.findChildren<T*>())
            if (widget->isVisible() && nameOf(*widget) == name) return widget;
        return nullptr;
    }

private:
    static bool isStop(const QWidget& widget) {
        return widget.isVisible() && widget.isEnabled() && !widget.focusProxy() &&
               widget.focusPolicy() & Qt::TabFocus && !widget.inherits("QScrollBar");
    }
    static QString nameOf(const QWidget& widget);

    static int widestWord(const QLabel& label);

    std::vector<const QWidget*> ordered() const;

    // In the order of the layouts, which is the one in which they are read.
    static void collect(const QWidget& widget, std::vector<const QWidget*>& into);
    static void collect(const QLayout& layout, std::vector<const QWidget*>& into);

    static QString text(const QWidget& widget);

    const QWidget& root_;
};

}  // namespace quorvi::test
