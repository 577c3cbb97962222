#include "Quorvi/ui/settings/SettingsSearch.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "Quorvi/ui/design/Colors.h"
#include "Quorvi/ui/design/Spacing.h"
#include "QuorviCore/text/Folding.h"

namespace quorvi {

namespace {

// What the widget shows, or how it is named.
QString textsOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text() + QLatin1Char('\n') + button->accessibleName();
    if (const auto* picker = qobject_cast<const QComboBox*>(&widget)) {
        QStringList entries;
        for (int each = 0; each < picker->count(); ++each) entries << picker->itemText(each);
        return entries.join(QLatin1Char('\n'));
    }
    if (qobject_cast<const QLineEdit*>(&widget)) return widget.accessibleName();
    return {};
}

}  // namespace

std::vector<QWidget*> SettingsSearch::matches(const QWidget& section, const QString& query) {
    const auto wanted = text::searchFolded(query.trimmed().toStdString());
    std::vector<QWidget*> found;
    if (wanted.empty()) return found;
    for (auto* widget : section.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&section)) continue;
        const auto shown = text::searchFolded(textsOf(*widget).toStdString());
        if (shown.find(wanted) != shown.npos) found.push_back(widget);
    }
    return found;
}

SearchMarks::SearchMarks(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    parent->installEventFilter(this);
    hide();
}

void SearchMarks::mark(std::vector<QWidget*> widgets) {
    marked_ = std::move(widgets);
    setGeometry(parentWidget()->rect());
    setVisible(!marked_.empty());
    raise();
    update();
}

bool SearchMarks::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    if (event->type() == QEvent::LayoutRequest) update();
    return QWidget::eventFilter(watched, event);
}

void SearchMarks::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    auto fill = color(ColorRole::accent, palette());
    painter.setPen(QPen(fill, 1));
    fill.setAlphaF(0.18F);
    painter.setBrush(fill);
    for (const auto* widget : marked_)
        painter.drawRoundedRect(
            QRectF(QRect(widget->mapTo(parentWidget(), QPoint()), widget->size()))
                .adjusted(-3.5, -1.5, 3.5, 1.5),
            spacing::tiny, spacing::tiny);
}

}  // namespace quorvi
