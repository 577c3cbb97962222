#pragma once

#include <QStackedWidget>
#include <QWidget>
#include <array>

#include "Quorvi/ui/WindowServices.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class Sidebar;

// The program's one window: a sidebar, and the page that the controller has selected. A page is
// made when it is first shown. Closing only hides the window and ends the choice of a shortcut; the
// program goes on. Remembers its size. Main thread.
class MainWindow : public QWidget {
public:
    explicit MainWindow(WindowServices services);
    ~MainWindow() override;

    // Shows the window, or brings it to the front, with the keyboard.
    void present();

    // On a desktop without a tray the window is the only way to reach the program: it says so, and
    // offers to quit.
    void setTrayMissing(bool missing);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    QWidget* page(int index);
    void restoreSize();
    void rememberSize();

    WindowServices services_;
    Sidebar* sidebar_;
    QStackedWidget* stack_;
    QWidget* trayNotice_;
    std::array<QWidget*, 4> pages_{};
    Subscription changes_;
};

}  // namespace quorvi
