#include "Quorvi/ui/design/Moment.h"

#include <QDateTime>
#include <QLocale>

namespace quorvi {

QString moment(Date date) {
    const QLocale locale;
    const auto time =
        QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.unixSeconds() * 1000));
    QString format = locale.dateFormat(QLocale::LongFormat);
    format.replace(QStringLiteral("dddd, "), QString());
    format.replace(QStringLiteral("dddd "), QString());
    format.replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    return locale.toString(time.date(), format) + QStringLiteral(", ") +
           locale.toString(time.time(), QLocale::ShortFormat);
}

}  // namespace quorvi
