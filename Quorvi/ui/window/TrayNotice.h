#pragma once

#include <QCoreApplication>
#include <QWidget>
#include <functional>

namespace quorvi {

// A note above the page that this desktop has no tray, with a button to quit.
class TrayNotice : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(TrayNotice)

public:
    explicit TrayNotice(std::function<void()> quit);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvi
