#pragma once

#include "QuorviCore/base/Bytes.h"

namespace quorvi {

// Half a second of silence, encoded as recordings are, to try a speech service out.
Bytes silentRecording();

}  // namespace quorvi
