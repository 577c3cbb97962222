#pragma once

#include <QCoreApplication>

#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

// A field to dictate into.
class TryItCard : public Card {
    Q_DECLARE_TR_FUNCTIONS(TryItCard)

public:
    TryItCard();
};

}  // namespace quorvi
