#pragma once

#include <QCoreApplication>
#include <string>
#include <string_view>

namespace quorvi {

// A fixed text of the layers below, which know no translations, in the user's language. UTF-8; what
// no translation knows is shown as it is.
inline QString modelText(std::string_view text) {
    return QCoreApplication::translate("Model", std::string(text).c_str());
}

}  // namespace quorvi
