#include "Quorvi/dictation/DictationStage.h"

namespace quorvi {

std::string_view title(DictationStage stage) {
    switch (stage) {
        case DictationStage::idle:
            return "Ready when you are";
        case DictationStage::recording:
            return "Listening…";
        case DictationStage::transcribing:
            return "Transcribing…";
        case DictationStage::inserting:
            return "Inserting…";
        case DictationStage::success:
            return "Done";
        case DictationStage::clipboard:
            return "Ready to paste";
        case DictationStage::failure:
            return "Needs attention";
        case DictationStage::learned:
            return "Correction saved";
    }
    return "";
}

}  // namespace quorvi
