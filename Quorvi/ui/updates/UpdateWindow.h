#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBrowser>
#include <QWidget>
#include <optional>

#include "Quorvi/system/updates/AppUpdater.h"
#include "Quorvi/ui/design/BrandMark.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/widgets/Spinner.h"

namespace quorvi {

// The window of a check for updates by the user, from "Checking…" to the system's installer.
// Closing it ends the check. Main thread; outlives the updater's `showWindow` callback.
class UpdateWindow : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(UpdateWindow)

public:
    explicit UpdateWindow(AppUpdater& updater);

    // Shows the window, or brings it to the front.
    void present();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The release notes. They load no resources; links open in the browser.
    class Notes : public QTextBrowser {
    public:
        Notes();
        QVariant loadResource(int type, const QUrl& name) override;
    };

    void arrange();
    void refresh();
    void showStage();
    void showProgress();
    void showNotes(bool visible);
    void setButtons(const QString& primary, const QString& secondary);
    void primaryPressed();
    void secondaryPressed();
    QString title() const;
    QString detail() const;

    AppUpdater& updater_;
    std::optional<UpdateStage> shown_;
    BrandMark icon_{48};
    HeadingLabel title_{{}, TextStyle::heading};
    Spinner spinner_;
    QLabel detail_;
    Notes notes_;
    QProgressBar progress_;
    QPushButton primary_;
    QPushButton secondary_;
    Subscription changes_;
};

}  // namespace quorvi
