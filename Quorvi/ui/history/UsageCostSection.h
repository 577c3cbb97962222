#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>

#include "Quorvi/ui/design/Controls.h"
#include "QuorviCore/history/UsageCost.h"
#include "QuorviCore/locale/LocaleFormats.h"

namespace quorvi {

// The choice of a period, in the order in which they are offered.
class PeriodPicker : public Picker {
public:
    PeriodPicker(const QString& accessibleName, UsagePeriod period);
    UsagePeriod period() const {
        return allUsagePeriods.at(static_cast<std::size_t>(currentIndex()));
    }
};

// What the dictations of a period are estimated to have cost.
class UsageCostSection : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(UsageCostSection)

public:
    // `periodChosen` is told of the user's choice; without it there is none to make.
    explicit UsageCostSection(UsagePeriod period,
                              std::function<void(UsagePeriod)> periodChosen = {});

    void show(const UsageCostSummary& cost, const LocaleFormats& formats);

private:
    void showModels(const UsageCostSummary& cost, const LocaleFormats& formats);

    QLabel* total_;
    QLabel* caption_;
    QLabel* none_;
    QWidget* models_;
    QVBoxLayout* modelsLayout_;
    QLabel* assumption_;
};

}  // namespace quorvi
