#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace quorvi {

// Asks before something is destroyed, beside the window's other work; Escape and Return answer no.
struct Confirmation {
    QString title;
    QString message;
    QString destroy;  // the button's text
    std::function<void()> onDestroy;
};
void ask(QWidget* parent, Confirmation confirmation);

}  // namespace quorvi
