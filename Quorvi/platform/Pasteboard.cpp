#include "Quorvi/platform/Pasteboard.h"

namespace quorvi {

bool PasteboardRepresentation::operator==(const PasteboardRepresentation& other) const {
    return type == other.type && encoding == other.encoding && format == other.format &&
           (data == other.data || (data && other.data && *data == *other.data));
}

}  // namespace quorvi
