#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

namespace quorvi {

// What stands for one day in a chart.
struct ChartDay {
    double words = 0;
    bool active = false;  // there were dictations
    QString label;        // below a bar
    QString value;        // the words, above the tallest bar
    QString description;  // the day and its numbers, in words
};

// A bar for each day, oldest to newest. Each tells its numbers under the pointer; screen readers
// have them all as the description.
class DailyBars : public QWidget {
public:
    explicit DailyBars(const QString& accessibleName);
    void show(std::vector<ChartDay> days);
    QSize sizeHint() const override { return {400, 170}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRectF slot(std::size_t day) const;

    std::vector<ChartDay> days_;
};

// The days of some weeks: a column for a week, a row for a day of the week.
class ActivityGrid : public QWidget {
public:
    explicit ActivityGrid(const QString& accessibleName);

    // `firstRow` is where the first day stands in its week; the labels are those of the rows.
    void show(std::vector<ChartDay> days, int firstRow, QStringList weekdays);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    // How strongly the accent colour shows for a day with so many words.
    static double opacity(double words, double mostWords);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    int columns() const;
    int labelWidth() const;
    QRectF cell(std::size_t day) const;

    std::vector<ChartDay> days_;
    int firstRow_ = 0;
    QStringList weekdays_;
};

// A share of something as a thin bar.
class ShareBar : public QWidget {
public:
    explicit ShareBar(double share);
    QSize sizeHint() const override { return {100, 6}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double share_;
};

}  // namespace quorvi
