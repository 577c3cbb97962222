#pragma once

#include <QStackedWidget>
#include <QWidget>
#include <array>
#include <functional>

#include "Quorvi/dictation/WindowPage.h"
#include "Quorvi/ui/WindowServices.h"
#include "QuorviCore/async/Observable.h"

namespace quorvi {

class Sidebar;

// The main window: a sidebar and the page that the controller has selected. Pages are created when
// first shown. Closing hides the window and ends a shortcut capture; the program keeps running.
// Remembers its size. Main thread; destroyed from the event loop's own level.
class MainWindow : public QWidget {
public:
    explicit MainWindow(WindowServices services);
    ~MainWindow() override;

    // Shows the window, or brings it to the front, and gives it the focus.
    void present();

    // Shows or hides the note for desktops without a tray, which offers to quit.
    void setTrayMissing(bool missing);

    // Whether something that the user asked for would be cut off by the window's end.
    bool isWorking() const;

    std::function<void()> onClosed;  // after it was hidden

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void showParts();
    QWidget* page(WindowPage page);
    void restoreSize();
    void rememberSize();

    WindowServices services_;
    Sidebar* sidebar_;
    QStackedWidget* stack_;
    QWidget* trayNotice_;
    std::array<QWidget*, allWindowPages.size()> pages_{};
    Subscription changes_;
};

}  // namespace quorvi
