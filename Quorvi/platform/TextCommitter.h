#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "QuorviCore/async/Scheduler.h"
#include "QuorviCore/async/Task.h"

namespace quorvi {

// A field that takes text from an input method: as its own, without keys and without the
// clipboard. While this object lives, this program is the input method, and no other can be
// started. Main thread.
class CommitField {
public:
    // What the field says of itself.
    enum class Kind {
        text,
        terminal,  // what it is given is typed for the program in it
        secret     // a password
    };
    enum class Delivery {
        nothing,   // the field no longer had the focus: nothing was sent
        sent,      // the field had the focus before and after, and its program was sent the text
        uncertain  // the field lost the focus meanwhile; it may have the text or a part of it
    };

    virtual ~CommitField() = default;

    virtual Kind kind() const = 0;

    // Replaces the selection. A text once begun is sent as a whole.
    virtual Task<Delivery> commit(std::string text) = 0;
};

// Gives text to fields as an input method does. Main thread; nothing blocks or throws, except
// Cancelled.
class TextCommitter {
public:
    virtual ~TextCommitter() = default;

    // Returns the field that has the focus; null if no field says within `patience` that it takes
    // text, or if another input method is running.
    virtual Task<std::unique_ptr<CommitField>> focusedField(Duration patience,
                                                            std::stop_token stop) = 0;
};

}  // namespace quorvi
