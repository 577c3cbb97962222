#pragma once

namespace quorvi {

// A widget that may be carrying out a wish of the user, which ends with the widget. Main thread.
class Working {
public:
    virtual ~Working() = default;
    virtual bool isWorking() const = 0;
};

}  // namespace quorvi
