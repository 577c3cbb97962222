#include "Quorvi/ui/updates/UpdateWindow.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QVBoxLayout>

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

constexpr int textWidth = 400;
constexpr int notesHeight = 220;

QString dataSize(std::uint64_t bytes) {
    return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

// The release's date, if known, and its size.
QString aboutRelease(const AppcastItem& item) {
    const auto date = QDateTime::fromString(qt(item.published), Qt::RFC2822Date);
    const auto size = dataSize(item.length);
    if (!date.isValid()) return size;
    return QLocale().toString(date.date(), QLocale::LongFormat) + QStringLiteral(" · ") + size;
}

}  // namespace

UpdateWindow::Notes::Notes() {
    setOpenLinks(false);
    document()->setDocumentMargin(10);
    // The style draws the field behind the text.
    viewport()->setAutoFillBackground(false);
    QObject::connect(this, &QTextBrowser::anchorClicked, this,
                     [](const QUrl& url) { QDesktopServices::openUrl(url); });
}

QVariant UpdateWindow::Notes::loadResource(int, const QUrl&) {
    return {};
}

UpdateWindow::UpdateWindow(AppUpdater& updater) : updater_(updater) {
    setWindowTitle(tr("Quorvi Updates"));
    setWindowIcon(BrandMark::icon());
    detail_.setTextFormat(Qt::PlainText);
    detail_.setWordWrap(true);
    title_.setMinimumWidth(textWidth);
    detail_.setMinimumWidth(textWidth);
    detail_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    notes_.setMinimumHeight(notesHeight);
    notes_.setAccessibleName(tr("Release notes"));
    progress_.setTextVisible(false);
    progress_.setAccessibleName(tr("Progress"));
    arrange();
    QObject::connect(&primary_, &QPushButton::clicked, this, [this] { primaryPressed(); });
    QObject::connect(&secondary_, &QPushButton::clicked, this, [this] { secondaryPressed(); });
    changes_ = updater_.onChange([this] { refresh(); });
}

void UpdateWindow::arrange() {
    auto* words = new QVBoxLayout;
    words->setSpacing(6);
    auto* heading = new QHBoxLayout;
    heading->addWidget(&title_, 1);
    heading->addWidget(&spinner_, 0, Qt::AlignTop);
    words->addLayout(heading);
    words->addWidget(&progress_);
    words->addWidget(&detail_);
    words->addStretch();
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(&icon_, 0, Qt::AlignTop);
    top->addLayout(words, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(&secondary_);
    buttons->addWidget(&primary_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(20, 20, 20, 16);
    all->setSpacing(14);
    all->addLayout(top);
    all->addWidget(&notes_, 1);
    all->addLayout(buttons);
    all->setSizeConstraint(QLayout::SetMinimumSize);
}

void UpdateWindow::present() {
    refresh();
    show();
    raise();
    activateWindow();
}

void UpdateWindow::refresh() {
    if (updater_.stage() == UpdateStage::idle) {
        shown_.reset();
        hide();
        return;
    }
    if (shown_ != updater_.stage()) showStage();
    if (updater_.stage() == UpdateStage::downloading) showProgress();
}

void UpdateWindow::showStage() {
    const auto stage = updater_.stage();
    shown_ = stage;
    title_.setText(title());
    detail_.setText(detail());
    detail_.setVisible(!detail_.text().isEmpty());
    const bool busy = stage == UpdateStage::checking || stage == UpdateStage::opening;
    spinner_.setVisible(busy);
    progress_.setVisible(stage == UpdateStage::downloading);
    showNotes(stage == UpdateStage::available || stage == UpdateStage::downloading ||
              stage == UpdateStage::ready);
    switch (stage) {
        case UpdateStage::checking:
        case UpdateStage::downloading:
            setButtons({}, tr("Cancel"));
            break;
        case UpdateStage::available:
            setButtons(tr("Download"), tr("Later"));
            break;
        case UpdateStage::ready:
            setButtons(tr("Install…"), tr("Later"));
            break;
        default:
            setButtons(tr("Close"), {});
    }
    // Follows its content, but keeps a size chosen by the user.
    if (notes_.isHidden() || height() < sizeHint().height()) adjustSize();
}

void UpdateWindow::showProgress() {
    const auto received = updater_.receivedBytes();
    const auto length = updater_.update()->length;
    // In thousandths, since QProgressBar takes int.
    progress_.setRange(0, 1000);
    progress_.setValue(static_cast<int>(received * 1000 / length));
    detail_.setVisible(true);
    detail_.setText(received < length ? tr("%1 of %2").arg(dataSize(received), dataSize(length))
                                      : tr("Verifying its signature…"));
}

void UpdateWindow::showNotes(bool visible) {
    if (visible && isVisible() && !notes_.isHidden()) return;
    if (visible) notes_.setHtml(shown(updater_.releaseNotes()));
    notes_.setVisible(visible && !updater_.releaseNotes().isEmpty());
}

void UpdateWindow::setButtons(const QString& primary, const QString& secondary) {
    setKind(primary_, ButtonKind::primary);
    primary_.setText(primary);
    primary_.setVisible(!primary.isEmpty());
    secondary_.setText(secondary);
    secondary_.setVisible(!secondary.isEmpty());
    auto& first = primary.isEmpty() ? secondary_ : primary_;
    first.setDefault(true);
    first.setFocus();
}

QString UpdateWindow::title() const {
    const auto version = updater_.update() ? qt(updater_.update()->displayVersion) : QString();
    switch (updater_.stage()) {
        case UpdateStage::checking:
            return tr("Checking for updates…");
        case UpdateStage::upToDate:
            return tr("No update available");
        case UpdateStage::available:
            return tr("Quorvi %1 is available").arg(version);
        case UpdateStage::downloading:
            return tr("Downloading Quorvi %1…").arg(version);
        case UpdateStage::ready:
            return tr("Quorvi %1 is ready to install").arg(version);
        case UpdateStage::opening:
            return tr("Opening the installer…");
        case UpdateStage::handedOver:
            return tr("The installer is open");
        case UpdateStage::failed:
            return updater_.update() ? tr("Quorvi %1 was not installed").arg(version)
                                     : tr("Can't look for updates");
        case UpdateStage::idle:
            break;
    }
    return {};
}

QString UpdateWindow::detail() const {
    switch (updater_.stage()) {
        case UpdateStage::available:
            return tr("You have Quorvi %1.").arg(qt(updater_.currentVersion())) +
                   QLatin1Char('\n') + aboutRelease(*updater_.update());
        case UpdateStage::ready:
            return tr(
                "Its signature has been verified. Your system's package installer will open, and "
                "may ask for your password.");
        default:
            return shown(updater_.message());
    }
}

void UpdateWindow::primaryPressed() {
    switch (updater_.stage()) {
        case UpdateStage::available:
            return updater_.download();
        case UpdateStage::ready:
            return updater_.install();
        default:
            updater_.close();
    }
}

void UpdateWindow::secondaryPressed() {
    if (updater_.stage() == UpdateStage::downloading)
        updater_.cancelDownload();
    else
        updater_.close();
}

void UpdateWindow::closeEvent(QCloseEvent* event) {
    updater_.close();
    event->accept();
}

void UpdateWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        updater_.close();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace quorvi
