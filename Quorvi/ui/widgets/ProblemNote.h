#pragma once

#include <QLabel>
#include <QWidget>
#include <optional>

#include "QuorviCore/messages/Message.h"

namespace quorvi {

// A store's problem with a warning symbol; hidden if there is none.
class ProblemNote : public QWidget {
public:
    ProblemNote();
    void show(const std::optional<Message>& problem);

private:
    QLabel* text_;
};

}  // namespace quorvi
