#pragma once

#include <atomic>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>
#include <gtest/gtest.h>

#include "testing/PrivateBus.h"

namespace zetui {

/// A desktop portal with one setting, the colour scheme. It answers in a thread of its own, since the one
/// that asks may wait for it.
class FakePortal : public QDBusVirtualObject
{
  public:
    explicit FakePortal(const PrivateBus& bus, uint colorScheme)
        : connection(
              QDBusConnection::connectToBus(QString::fromStdString(bus.Address()), QStringLiteral("portal"))),
          scheme(colorScheme)
    {
        moveToThread(&thread);
        thread.start();
        EXPECT_TRUE(connection.registerVirtualObject(path, this));
        EXPECT_TRUE(connection.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    ~FakePortal() override
    {
        connection.unregisterObject(path);
        thread.quit();
        thread.wait();
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }

    /// The user changes the desktop's setting.
    void Change(uint colorScheme)
    {
        scheme = colorScheme;
        Tell(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"));
    }
    void Tell(const QString& group, const QString& key)
    {
        QDBusMessage signal = QDBusMessage::createSignal(path, settings, QStringLiteral("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(scheme.load()));
        EXPECT_TRUE(connection.send(signal));
    }
    int Questions() const { return questions; }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& asked) override
    {
        if (message.member() != u"Read" || message.interface() != settings)
            return false;
        ++questions;
        const QDBusVariant inner{QVariant(scheme.load())};
        asked.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
        return true;
    }

  private:
    const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
    QDBusConnection connection;
    QThread thread;
    std::atomic<uint> scheme;
    std::atomic<int> questions = 0;
};

} // namespace zetui
