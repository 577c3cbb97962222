#pragma once

#include <memory>
#include <string>

#include "Quorvi/platform/AudioCapture.h"
#include "Quorvi/platform/linux/pulse/PulseConnection.h"

namespace quorvi {

// A recording stream of which only the level is kept. Main thread; `connection` outlives it.
class PulseLevel : public AudioLevel {
public:
    PulseLevel(PulseConnection& connection, std::string microphone);
    ~PulseLevel() override;
    PulseLevel(const PulseLevel&) = delete;
    PulseLevel& operator=(const PulseLevel&) = delete;

    float averagePower() override;

private:
    struct Listening;

    PulseConnection& connection_;
    std::shared_ptr<Listening> listening_;  // shared with the sound thread
};

}  // namespace quorvi
