#include "Quorvi/ui/window/MainWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/platform/Preferences.h"
#include "Quorvi/ui/corrections/RememberCorrectionButton.h"
#include "Quorvi/ui/design/BrandMark.h"
#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/settings/SettingsPage.h"
#include "Quorvi/ui/widgets/Working.h"
#include "Quorvi/ui/window/Pages.h"
#include "Quorvi/ui/window/Sidebar.h"
#include "Quorvi/ui/window/TrayNotice.h"
#include "QuorviCore/settings/Setting.h"

namespace quorvi {

namespace {

const auto sizeKey = setting::mainWindowSize.key();
constexpr QSize usualSize(940, 800);
constexpr QSize smallestSize(900, 740);
constexpr QSize frameRoom(8, 40);  // approximate size of a window manager's frame

// "940x800", in logical pixels.
QString written(QSize size) {
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QSize read(const QString& text) {
    const auto parts = text.split(QLatin1Char('x'));
    return parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
}

}  // namespace

MainWindow::MainWindow(WindowServices services)
    : services_(std::move(services)),
      sidebar_(new Sidebar(services_.model)),
      stack_(new QStackedWidget),
      trayNotice_(new TrayNotice(services_.quit)) {
    setWindowTitle(QStringLiteral("Quorvi"));
    setWindowIcon(BrandMark::icon());
    services_.history.makeRememberButton = [this](const QString& transcript) -> QWidget* {
        return new RememberCorrectionButton(transcript, services_.corrections, ButtonKind::quiet);
    };
    auto* detail = new QVBoxLayout;
    detail->setSpacing(0);
    detail->addWidget(trayNotice_);
    detail->addWidget(stack_, 1);
    trayNotice_->hide();
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(sidebar_);
    all->addLayout(detail, 1);
    sidebar_->onPartChosen = [this](int part) {
        if (auto* settings = dynamic_cast<SettingsPage*>(stack_->currentWidget()))
            settings->reveal(part);
    };
    restoreSize();
    refresh();
    changes_ = services_.model.onChange([this] { refresh(); });
}

MainWindow::~MainWindow() {
    rememberSize();
}

void MainWindow::present() {
    services_.model.refreshPermissions();
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
}

void MainWindow::setTrayMissing(bool missing) {
    trayNotice_->setVisible(missing);
}

// On a small screen the window is smaller, and its pages scroll.
void MainWindow::restoreSize() {
    QSize room = usualSize;
    if (const auto* screen = QGuiApplication::primaryScreen())
        room = screen->availableGeometry().size() - frameRoom;
    setMinimumSize(smallestSize.boundedTo(room));
    const auto remembered = services_.preferences.string(sizeKey);
    const QSize wanted = remembered ? read(QString::fromStdString(*remembered)) : usualSize;
    resize(wanted.expandedTo(minimumSize()).boundedTo(room));
}

void MainWindow::rememberSize() {
    if (isMaximized() || isFullScreen()) return;
    const auto now = written(size()).toStdString();
    if (services_.preferences.string(sizeKey) != now) services_.preferences.setString(sizeKey, now);
}

void MainWindow::refresh() {
    auto* shown = page(services_.model.selectedPage());
    if (stack_->currentWidget() == shown) return;
    stack_->setCurrentWidget(shown);
    showParts();
}

QWidget* MainWindow::page(WindowPage page) {
    auto*& widget = pages_[static_cast<std::size_t>(page)];
    if (!widget) {
        widget = makePage(page, services_);
        stack_->addWidget(widget);
        if (auto* settings = dynamic_cast<SettingsPage*>(widget))
            settings->onSectionsChanged = [this] { showParts(); };
    }
    return widget;
}

// The sections of the settings are entries of the sidebar, too.
void MainWindow::showParts() {
    const auto* settings = dynamic_cast<SettingsPage*>(stack_->currentWidget());
    sidebar_->showParts(settings ? settings->sections() : QStringList(),
                        settings ? settings->currentSection() : -1);
}

bool MainWindow::isWorking() const {
    return std::ranges::any_of(findChildren<QWidget*>(), [](const QWidget* child) {
        const auto* working = dynamic_cast<const Working*>(child);
        return working && working->isWorking();
    });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    rememberSize();
    services_.model.endShortcutCapture();
    hide();
    event->ignore();
    if (onClosed) onClosed();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Close))
        close();
    else if (event->matches(QKeySequence::Quit) && services_.quit)
        services_.quit();
    else
        QWidget::keyPressEvent(event);
}

void MainWindow::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), color(ColorRole::page, palette()));
}

}  // namespace quorvi
