#include "Quorvi/ui/history/HistoryRow.h"

#include <QPainter>

#include "Quorvi/ui/design/Controls.h"
#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Symbols.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/history/HistoryTexts.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

namespace {

QLabel* oneLine(QLabel* label) {
    label->setWordWrap(false);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return label;
}

}  // namespace

HistoryRow::HistoryRow(const Actions& actions)
    : actions_(actions),
      time_(oneLine(bodyText())),
      app_(oneLine(bodyText())),
      caption_(oneLine(captionText())),
      text_(contentText()),
      toggle_(button(tr("Show full text"), ButtonKind::link)),
      copy_(symbolButton(tr("Copy dictation"), "doc.on.doc")),
      delete_(symbolButton(tr("Delete dictation"), "trash")) {
    auto font = time_->font();
    font.setWeight(QFont::DemiBold);
    time_->setFont(font);

    // Aligns the text with the divider; the symbols above have a margin of this width.
    text_->setContentsMargins(0, 0, spacing::large - spacing::medium, 0);

    actionsRow_ = row({time_, new SymbolLabel("macwindow", 15, ColorRole::secondary), app_,
                       caption_, nullptr, copy_, delete_});
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(spacing::large, spacing::medium, spacing::medium, spacing::medium);
    all->setSpacing(spacing::small);
    all->addLayout(actionsRow_);
    all->addWidget(text_);
    all->addWidget(toggle_, 0, Qt::AlignLeft);

    QObject::connect(copy_, &QPushButton::clicked, this, [this] { actions_.copy(entry_); });
    QObject::connect(delete_, &QPushButton::clicked, this, [this] { actions_.remove(entry_); });
    QObject::connect(toggle_, &QPushButton::clicked, this,
                     [this] { actions_.expand(entry_, !expanded_); });
}

void HistoryRow::show(const DictationRecord& record, const LocaleFormats& formats, bool expanded) {
    const bool sameText = record.text == entry_.text && remember_;
    entry_ = record;
    expanded_ = expanded;
    time_->setText(qt(formats.shortTime(record.date)));
    app_->setText(qt(record.appName));
    caption_->setText(texts::recordCaption(record, formats));
    setAccessibleName(time_->text() + QStringLiteral(", ") + app_->text());
    showText();
    if (sameText || !actions_.makeRememberButton) return;
    delete remember_;
    remember_ = actions_.makeRememberButton(qt(*record.text));
    if (!remember_) return;
    actionsRow_->insertWidget(actionsRow_->indexOf(delete_), remember_);
    setTabOrder(copy_, remember_);
    setTabOrder(remember_, delete_);
}

void HistoryRow::showText() {
    const bool isLong = texts::isShortened(entry_);
    const auto text = qt(*entry_.text);
    setContent(*text_, text, isLong && !expanded_ ? texts::beginningOf(entry_) : text.size());
    toggle_->setText(expanded_ ? tr("Show less") : tr("Show full text"));
    toggle_->setVisible(isLong);
}

void HistoryRow::setPlace(Place place) {
    if (place_ == place) return;
    place_ = place;
    update();
}

void HistoryRow::setCopied(bool copied) {
    if (copied_ == copied) return;
    copied_ = copied;
    const auto name = copied ? tr("Copied") : tr("Copy dictation");
    copy_->setIcon(copied ? symbolIcon("checkmark", ColorRole::success)
                          : symbolIcon("doc.on.doc", ColorRole::secondary));
    copy_->setToolTip(name);
    copy_->setAccessibleName(name);
}

void HistoryRow::paintEvent(QPaintEvent*) {
    constexpr double radius = spacing::cardRadius;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color(ColorRole::hairline, palette()), 1));
    painter.setBrush(color(ColorRole::card, palette()));
    // The card continues above or below this row.
    const auto card = QRectF(rect()).adjusted(0.5, place_.first ? 0.5 : -2 * radius, -0.5,
                                              place_.last ? -0.5 : 2 * radius);
    painter.drawRoundedRect(card, radius, radius);
    if (!place_.first)
        painter.drawLine(QPointF(spacing::large, 0.5), QPointF(width() - spacing::large, 0.5));
}

}  // namespace quorvi
