#include "Quorvi/ui/history/UsageCostSection.h"

#include <QDesktopServices>
#include <QUrl>
#include <utility>

#include "Quorvi/ui/design/Spacing.h"
#include "Quorvi/ui/design/Texts.h"
#include "Quorvi/ui/history/HistoryTexts.h"
#include "Quorvi/ui/translations/ShownMessage.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

PeriodPicker::PeriodPicker(const QString& accessibleName, UsagePeriod period)
    : Picker(accessibleName) {
    for (const auto one : allUsagePeriods) addItem(shown(title(one)));
    setCurrentIndex(static_cast<int>(period));
}

UsageCostSection::UsageCostSection(UsagePeriod period,
                                   std::function<void(UsagePeriod)> periodChosen)
    : total_(new QLabel),
      caption_(captionText()),
      none_(secondaryText(tr("No completed dictations in this period."))),
      models_(new QWidget),
      modelsLayout_(new QVBoxLayout(models_)),
      assumption_(captionText()) {
    total_->setFont(textFont(TextStyle::figure));
    total_->setTextFormat(Qt::PlainText);
    modelsLayout_->setContentsMargins({});
    modelsLayout_->setSpacing(spacing::small);

    auto* heading = row({new SymbolLabel("dollarsign.circle", 20, ColorRole::accent)});
    heading->addWidget(headingText(tr("Estimated API cost")), 1);
    auto* figures = new QVBoxLayout;
    figures->setSpacing(0);
    figures->addWidget(total_);
    figures->addWidget(caption_);
    auto* pricing = button(tr("OpenAI pricing ↗"), ButtonKind::link);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(spacing::medium);
    all->addLayout(heading);
    if (periodChosen) {
        auto* picker = new PeriodPicker(tr("Cost period"), period);
        auto* label = bodyText(tr("Cost period"));
        label->setWordWrap(false);
        label->setBuddy(picker);
        all->addLayout(row({label, nullptr, picker}));
        QObject::connect(picker, &QComboBox::currentIndexChanged, this,
                         [picker, chosen = std::move(periodChosen)] { chosen(picker->period()); });
    }
    all->addLayout(figures);
    all->addWidget(none_);
    all->addWidget(models_);
    all->addWidget(assumption_);
    all->addWidget(captionText(
        tr("Estimate before tax for completed dictations in your Quorvi history, including synced "
           "Macs. Deleted dictations, failed or cancelled requests, and usage in other apps are "
           "excluded. Actual charges may differ.")));
    all->addWidget(pricing, 0, Qt::AlignLeft);
    QObject::connect(pricing, &QPushButton::clicked, this, [] {
        QDesktopServices::openUrl(QUrl(QString::fromLatin1(texts::pricingPage)));
    });
    none_->hide();
    models_->hide();
    assumption_->hide();
}

void UsageCostSection::show(const UsageCostSummary& cost, const LocaleFormats& formats) {
    total_->setText(texts::costText(cost.totalUSD(), formats));
    caption_->setText(texts::totalCaption(cost, formats));
    none_->setVisible(cost.dictations() == 0);
    models_->setVisible(cost.dictations() != 0);
    showModels(cost, formats);
    assumption_->setText(texts::assumptionNote(cost, formats));
    assumption_->setVisible(cost.assumedDictations() > 0);
}

void UsageCostSection::showModels(const UsageCostSummary& cost, const LocaleFormats& formats) {
    while (auto* item = modelsLayout_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const auto& model : cost.models) {
        auto* line = new QWidget;
        auto* names = new QVBoxLayout;
        names->setSpacing(0);
        names->addWidget(bodyText(texts::modelName(model.id)));
        names->addWidget(captionText(texts::modelCaption(model, formats)));
        auto* amount = bodyText(model.id.estimate.isKnown() ? texts::costText(model.usd(), formats)
                                                            : QStringLiteral("–"));
        amount->setWordWrap(false);
        auto* layout = new QHBoxLayout(line);
        layout->setContentsMargins({});
        layout->addLayout(names, 1);
        layout->addWidget(amount);
        line->setToolTip(texts::modelTooltip(model));
        modelsLayout_->addWidget(line);
    }
}

}  // namespace quorvi
