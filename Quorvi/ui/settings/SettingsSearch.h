#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

namespace quorvi {

// What a section of the settings shows at the moment, and where a search finds it. Case and
// diacritics don't count. Main thread.
class SettingsSearch {
public:
    // The visible widgets of `section` whose texts contain the query, in reading order: labels,
    // buttons, switches, the entries of pickers, and the names of fields.
    static std::vector<QWidget*> matches(const QWidget& section, const QString& query);
};

// Marks the widgets that a search has found. Covers its parent and lets the mouse through.
class SearchMarks : public QWidget {
public:
    explicit SearchMarks(QWidget* parent);
    void mark(std::vector<QWidget*> widgets);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<QWidget*> marked_;
};

}  // namespace quorvi
