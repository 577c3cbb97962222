#include "Quorvi/ui/settings/CloudAddress.h"

#include <QUrl>
#include <QUrlQuery>

#include "Quorvi/ui/design/Texts.h"

namespace quorvi {

namespace {

const auto folderScheme = QStringLiteral("folder:");
const auto serverScheme = QStringLiteral("postgresql://");
const auto shortServerScheme = QStringLiteral("postgres://");
const auto certificateOption = QStringLiteral("sslrootcert");

QString withoutScheme(const QString& server) {
    for (const auto& scheme : {serverScheme, shortServerScheme})
        if (server.startsWith(scheme)) return server.mid(scheme.size());
    return server;
}

}  // namespace

CloudAddress CloudAddress::of(const std::string& address) {
    const auto text = qt(address);
    if (text.isEmpty()) return {};
    if (text.startsWith(folderScheme))
        return {CloudPlace::sharedFolder, text.mid(folderScheme.size()), {}, {}, {}};
    QUrl url(text);
    QUrlQuery options(url);
    CloudAddress parts{CloudPlace::server, {}, withoutScheme(text), {}, {}};
    if (!url.isValid()) return parts;  // several hosts, for example
    parts.user = url.userName();
    parts.certificate = options.queryItemValue(certificateOption, QUrl::FullyDecoded);
    url.setUserName({});
    options.removeQueryItem(certificateOption);
    url.setQuery(options.isEmpty() ? QString() : options.query());
    parts.server = withoutScheme(url.toString());
    return parts;
}

std::string CloudAddress::text() const {
    if (place == CloudPlace::thisComputer) return {};
    if (place == CloudPlace::sharedFolder) return (folderScheme + folder.trimmed()).toStdString();
    const auto plain = serverScheme + withoutScheme(server.trimmed());
    QUrl url(plain);
    if (!url.isValid()) return plain.toStdString();
    if (!user.trimmed().isEmpty()) url.setUserName(user.trimmed());
    QUrlQuery options(url);
    if (!certificate.trimmed().isEmpty()) {
        options.removeQueryItem(certificateOption);
        options.addQueryItem(certificateOption, certificate.trimmed());
        url.setQuery(options);
    }
    return url.toEncoded().toStdString();
}

QString CloudAddress::shortServer() const {
    const QUrl url(serverScheme + server);
    return url.isValid() ? url.host() + url.path() : server;
}

}  // namespace quorvi
