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

// A choice of a period.
class PeriodPicker : public Picker {
public:
    PeriodPicker(const QString& accessibleName, UsagePeriod period);
    UsagePeriod period() const {
        return allUsagePeriods.at(static_cast<std::size_t>(currentIndex()));
    }
};

// The estimated cost of the dictations of a period.
class UsageCostSection : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(UsageCostSection)

public:
    // Without `periodChosen` there is no picker.
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
