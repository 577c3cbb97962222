#include "Quorvi/ui/window/Sidebar.h"

#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/design/BrandMark.h"
#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

namespace {

constexpr int sidebarWidth = 216;

// A page's entry: a symbol and a label, filled while selected.
class SidebarItem : public QPushButton {
public:
    // Without a symbol: a part of the page above it.
    SidebarItem(const QString& text, const char* symbol) : QPushButton(text), symbol_(symbol) {
        setCheckable(true);
        setAutoExclusive(true);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + 60,
                fontMetrics().height() + (symbol_ ? 20 : 10)};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF shape = QRectF(rect()).adjusted(1, 1, -1, -1);
        const QColor ink = color(ColorRole::ink, palette());
        const QColor ground = color(ColorRole::sidebar, palette());
        const QColor accent = color(ColorRole::accent, palette());
        painter.setPen(Qt::NoPen);
        if (isChecked())
            painter.setBrush(isHighContrast(palette()) ? accent : mixed(ground, accent, 0.16));
        else
            painter.setBrush(underMouse() ? mixed(ground, ink, 0.06) : QColor(Qt::transparent));
        painter.drawRoundedRect(shape, spacing::controlRadius, spacing::controlRadius);
        const QColor onFill =
            isChecked() && isHighContrast(palette()) ? color(ColorRole::onAccent, palette()) : ink;
        const QColor tint = isChecked() && !isHighContrast(palette()) ? accent : onFill;
        const QRect symbolRect =
            QStyle::visualRect(layoutDirection(), rect(), QRect(12, (height() - 18) / 2, 18, 18));
        if (symbol_)
            painter.drawPixmap(symbolRect.topLeft(),
                               symbolPixmap(symbol_, tint, 18, devicePixelRatioF()));
        painter.setPen(onFill);
        QFont shown = symbol_ ? font() : textFont(TextStyle::caption);
        if (isChecked()) shown.setWeight(QFont::DemiBold);
        painter.setFont(shown);
        painter.drawText(
            QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(40, 0, -8, 0)),
            Qt::AlignVCenter | Qt::AlignLeading,
            QFontMetrics(shown).elidedText(text(), Qt::ElideRight, width() - 48));
        if (!hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange)) return;
        painter.setPen(QPen(accent, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(shape, spacing::controlRadius, spacing::controlRadius);
    }

private:
    const char* symbol_;
};

}  // namespace

Sidebar::Sidebar(AppModel& model) : model_(model) {
    setMinimumWidth(sidebarWidth);
    setAccessibleName(tr("Pages"));
    struct Entry {
        QString text;
        const char* symbol;
        WindowPage page;
    };
    const Entry entries[] = {
        {tr("Dictation"), "waveform", WindowPage::dictation},
        {tr("History"), "clock.arrow.circlepath", WindowPage::history},
        {tr("Insights"), "chart.bar.xaxis", WindowPage::insights},
        {tr("Settings"), "slider.horizontal.3", WindowPage::settings},
    };
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(spacing::medium, spacing::huge, spacing::medium, spacing::large);
    all->setSpacing(2);
    for (const auto& entry : entries) {
        auto* item = new SidebarItem(entry.text, entry.symbol);
        items_.addButton(item, static_cast<int>(entry.page));
        all->addWidget(item);
    }
    parts_ = new QWidget;
    parts_->setAccessibleName(tr("Sections"));
    auto* partList = new QVBoxLayout(parts_);
    partList->setContentsMargins({});
    partList->setSpacing(0);
    parts_->hide();
    all->addWidget(parts_);
    all->addStretch(1);
    all->addWidget(footer());
    connect(&partItems_, &QButtonGroup::idClicked, this, [this](int part) {
        if (onPartChosen) onPartChosen(part);
    });
    connect(&items_, &QButtonGroup::idToggled, this, [this](int page, bool on) {
        if (!on) return;
        model_.endShortcutCapture();
        model_.setSelectedPage(static_cast<WindowPage>(page));
    });
    refresh();
    changes_ = model_.onChange([this] { refresh(); });
}

QWidget* Sidebar::footer() {
    auto* foot = new QWidget;
    auto* all = new QVBoxLayout(foot);
    all->setContentsMargins(spacing::small, 0, spacing::small, 0);
    all->setSpacing(spacing::small);
    auto* name =
        row({new BrandMark(32), new HeadingLabel(QStringLiteral("Quorvi"), TextStyle::heading)});
    name->setStretch(1, 1);
    all->addLayout(name);
    all->addWidget(captionText(tr("Your voice, in your words.")));
    auto* language = row({new SymbolLabel("globe", 14, ColorRole::secondary),
                          captionText(tr("Automatic language"))});
    language->setStretch(1, 1);
    all->addLayout(language);
    all->addWidget(
        captionText(tr("Quorvi %1 · Native for Mac").arg(QCoreApplication::applicationVersion())));
    return foot;
}

void Sidebar::makeParts(const QStringList& names) {
    for (auto* item : partItems_.buttons()) delete item;
    QWidget* before = items_.buttons().last();
    for (int part = 0; part < names.size(); ++part) {
        auto* item = new SidebarItem(names[part], nullptr);
        item->setAccessibleName(tr("Section: %1").arg(names[part]));
        partItems_.addButton(item, part);
        parts_->layout()->addWidget(item);
        setTabOrder(before, item);
        before = item;
    }
}

void Sidebar::showParts(const QStringList& names, int current) {
    QStringList shown;
    for (int part = 0; part < partItems_.buttons().size(); ++part)
        shown << partItems_.button(part)->text();
    if (shown != names) makeParts(names);
    parts_->setVisible(!names.isEmpty());
    if (auto* item = partItems_.button(current)) item->setChecked(true);
}

void Sidebar::refresh() {
    const QSignalBlocker quiet(&items_);
    if (auto* item = items_.button(static_cast<int>(model_.selectedPage()));
        item && !item->isChecked())
        item->setChecked(true);
}

void Sidebar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), color(ColorRole::sidebar, palette()));
    const int edge = layoutDirection() == Qt::RightToLeft ? 0 : width() - 1;
    painter.fillRect(QRect(edge, 0, 1, height()), color(ColorRole::hairline, palette()));
}

}  // namespace quorvi
