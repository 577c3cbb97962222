#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

namespace quorvi {

// A day of a chart.
struct ChartDay {
    double words = 0;
    bool active = false;  // there were dictations
    QString label;        // below a bar
    QString value;        // the words, above the tallest bar
    QString description;  // for tool tips and screen readers
};

// A bar for each day, oldest first. Tool tips show a day's numbers; the accessible description
// lists all.
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

// A grid of days: a column per week, a row per weekday.
class ActivityGrid : public QWidget {
public:
    explicit ActivityGrid(const QString& accessibleName);

    // `firstRow` is the row of the first day; `weekdays` are the labels of the rows.
    void show(std::vector<ChartDay> days, int firstRow, QStringList weekdays);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    // The opacity of a day's accent colour.
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

// A thin bar that is filled to a share, 0 to 1.
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
