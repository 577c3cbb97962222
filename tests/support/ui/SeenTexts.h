#pragma once

#include <QWidget>
#include <string>

namespace quorvi::test {

// A part of an interface by its class.
template <class T>
T* part(const QWidget& root) {
    for (auto* widget : root.findChildren<QWidget*>())
        if (auto* found = dynamic_cast<T*>(widget)) return found;
    return nullptr;
}

// The texts that can be seen, top to bottom and then from left to right: labels as they are,
// buttons in brackets, in round ones when they can't be used, choices with an arrow. Texts on one
// line are those whose middles are no further apart than a few pixels.
std::string seen(const QWidget& root);

}  // namespace quorvi::test
