#include "Quorvi/shell/BusService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <utility>

#include "Quorvi/shell/BusNames.h"
#include "Quorvi/ui/translations/ShownMessage.h"

namespace quorvi {

namespace {

QString latin(const char* text) {
    return QString::fromLatin1(text);
}

const char* word(DictationStage stage) {
    switch (stage) {
        case DictationStage::idle:
            return "idle";
        case DictationStage::recording:
            return "recording";
        case DictationStage::transcribing:
            return "transcribing";
        case DictationStage::inserting:
            return "inserting";
        case DictationStage::success:
            return "success";
        case DictationStage::clipboard:
            return "clipboard";
        case DictationStage::failure:
            return "failure";
        case DictationStage::learned:
            return "learned";
    }
    return "";
}

}  // namespace

BusService::BusService(AppModel& model, Actions actions)
    : model_(model), actions_(std::move(actions)) {
    auto connection = QDBusConnection::sessionBus();
    if (!connection.isConnected()) return;
    // Registers the object first: calls that wait for the name are delivered at once.
    connection.registerVirtualObject(latin(bus::path), this);
    auto request = QDBusMessage::createMethodCall(
        latin("org.freedesktop.DBus"), latin("/org/freedesktop/DBus"),
        latin("org.freedesktop.DBus"), latin("RequestName"));
    constexpr uint doNotQueue = 4;
    request << latin(bus::name) << doNotQueue;
    connection.asyncCall(request);
}

BusService::~BusService() {
    QDBusConnection::sessionBus().unregisterObject(latin(bus::path));
}

QVariantList BusService::status() const {
    return {latin(word(model_.stage())), shown(title(model_.stage())), shown(model_.message()),
            model_.ready()};
}

bool BusService::carryOut(const QString& method) {
    if (method == latin("Start")) {
        model_.start();
    } else if (method == latin("Finish")) {
        model_.finish();
    } else if (method == latin("Toggle")) {
        actions_.toggle();
    } else if (method == latin("Cancel")) {
        if (model_.canCancel()) model_.cancel();
    } else if (method == latin("Retry")) {
        model_.retry();
    } else if (method == latin("Show")) {
        actions_.show();
    } else if (method == latin("Quit")) {
        actions_.quit();
    } else {
        return false;
    }
    return true;
}

bool BusService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const auto interface = message.interface();
    const auto method = message.member();
    const auto activates = interface == latin(bus::activation);
    if (!activates && !interface.isEmpty() && interface != latin(bus::interface)) return false;
    if (activates) {
        if (method != latin("Activate") && method != latin("Open") &&
            method != latin("ActivateAction"))
            return false;
        actions_.show();
    } else if (method == latin("Status")) {
        connection.send(message.createReply(status()));
        return true;
    } else if (!carryOut(method)) {
        return false;
    }
    if (message.isReplyRequired()) connection.send(message.createReply());
    return true;
}

QString BusService::introspect(const QString& path) const {
    if (path != latin(bus::path)) return {};
    return latin(
        "<interface name=\"app.quorvi.Quorvi\">"
        "<method name=\"Start\"/><method name=\"Finish\"/><method name=\"Toggle\"/>"
        "<method name=\"Cancel\"/><method name=\"Show\"/><method name=\"Quit\"/>"
        "<method name=\"Status\"><arg name=\"stage\" type=\"s\" direction=\"out\"/>"
        "<arg name=\"title\" type=\"s\" direction=\"out\"/>"
        "<arg name=\"message\" type=\"s\" direction=\"out\"/>"
        "<arg name=\"ready\" type=\"b\" direction=\"out\"/></method>"
        "</interface>"
        "<interface name=\"org.freedesktop.Application\">"
        "<method name=\"Activate\"><arg type=\"a{sv}\" direction=\"in\"/></method>"
        "<method name=\"Open\"><arg type=\"as\" direction=\"in\"/>"
        "<arg type=\"a{sv}\" direction=\"in\"/></method>"
        "<method name=\"ActivateAction\"><arg type=\"s\" direction=\"in\"/>"
        "<arg type=\"av\" direction=\"in\"/><arg type=\"a{sv}\" direction=\"in\"/></method>"
        "</interface>");
}

}  // namespace quorvi
