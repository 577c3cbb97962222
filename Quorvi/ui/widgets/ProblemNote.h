#pragma once

#include <QLabel>
#include <QWidget>
#include <optional>
#include <string>

namespace quorvi {

// The one problem of a store, with a warning symbol; nothing when there is none.
class ProblemNote : public QWidget {
public:
    ProblemNote();
    void show(const std::optional<std::string>& problem);

private:
    QLabel* text_;
};

}  // namespace quorvi
