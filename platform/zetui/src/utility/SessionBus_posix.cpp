#include "utility/SessionBus_posix.h"

#include <QFile>

namespace zetui::utility {

namespace {

/// Empty without a session bus. A connection to "the session bus" would start one then.
QString SessionBusAddress()
{
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    if (!address.isEmpty() || !QFile::exists(usual))
        return address;
    return QStringLiteral("unix:path=") + usual;
}

QDBusConnection ConnectTo(const QString& address, const QString& name)
{
    return address.isEmpty() ? QDBusConnection(name) : QDBusConnection::connectToBus(address, name);
}

} // namespace

SessionBus::SessionBus()
    : name(QStringLiteral("zetui %1").arg(quintptr(this))), connection(ConnectTo(SessionBusAddress(), name))
{}

SessionBus::~SessionBus()
{
    QDBusConnection::disconnectFromBus(name);
}

} // namespace zetui::utility
