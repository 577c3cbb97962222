#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace quorvi {

// A question before data is deleted. ask() does not block; Escape and Return cancel.
struct Confirmation {
    QString title;
    QString message;
    QString destroy;  // the button's text
    std::function<void()> onDestroy;
};
void ask(QWidget* parent, Confirmation confirmation);

}  // namespace quorvi
