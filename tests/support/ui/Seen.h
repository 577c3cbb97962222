#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvi::test {

// What a user sees of a widget. Handles pending events first, since layouts are done in the loop.
class Seen {
public:
    explicit Seen(QWidget& root);

    // In reading order: texts, [buttons], (switches: on), <pickers: choice> and {fields: content},
    // with a "-" before what is disabled.
    QStringList lines() const;
    // The same as one string, separated by " | ".
    std::string text() const;
    bool has(const char* part) const { return text().find(part) != std::string::npos; }
    int count(const char* line) const {
        return static_cast<int>(lines().count(QString::fromUtf8(line)));
    }

    // The texts that are cut off or outside of their parent, with their sizes.
    QStringList clipped() const;
    // The names of the tab stops: in reading order, and in the order of Tab.
    QStringList stopsAsRead() const;
    QStringList stopsOfTab() const;

    // The visible control with this accessible name or text; the first, or one after it. Throws if
    // there is none.
    template <class T>
    T& control(const char* name, int which = 0) const {
        for (auto* widget : order_)
            if (auto* found = dynamic_cast<T*>(widget); found && isNamed(*widget, name))
                if (which-- == 0) return *found;
        throw std::runtime_error(std::string("no control ") + name + " in: " + text());
    }
    // Clicks the button with this name.
    void press(const char* name, int which = 0) const;
    // Chooses an entry of a picker, as the user does.
    void choose(const char* picker, int index) const;

private:
    static bool isNamed(const QWidget& widget, const char* name);

    QWidget& root_;
    std::vector<QWidget*> order_;
};

// The part of an interface that is of a class; null if there is none.
template <class T>
T* part(const QWidget& root) {
    for (auto* widget : root.findChildren<QWidget*>())
        if (auto* found = dynamic_cast<T*>(widget)) return found;
    return nullptr;
}

}  // namespace quorvi::test
