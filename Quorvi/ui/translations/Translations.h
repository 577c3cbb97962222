#pragma once

#include <QLocale>
#include <QTranslator>
#include <memory>

namespace quorvi {

// The interface's texts in that language, which take effect while the object lives; without a
// translation into it they stay English. Main thread; before the first widget.
std::unique_ptr<QTranslator> installTranslation(const QLocale& locale);

}  // namespace quorvi
