#pragma once

#include <QDBusConnection>
#include <QString>

namespace zetui::utility {

/// A connection of its own to the user's session bus, for as long as the object lives. Main thread.
class SessionBus
{
  public:
    SessionBus();
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Not connected where there is no bus.
    QDBusConnection& Connection() noexcept { return connection; }

  private:
    QString name;
    QDBusConnection connection;
};

} // namespace zetui::utility
