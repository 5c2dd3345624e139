#include "skins/DesktopScheme.h"

#include <utility>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QTimer>

#include "utility/SessionBus_posix.h"

namespace zetui::skins {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString group = QStringLiteral("org.freedesktop.appearance");
const QString key = QStringLiteral("color-scheme");

/// A window that opens waits so long. A portal that has to be started first answers later.
constexpr int longestWait = 300;

QDBusMessage Question()
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, settings, QStringLiteral("Read"));
    message << group << key;
    return message;
}

/// The portal's answer: 1 asks for dark, 2 for light, and anything else leaves it to us. Portals wrap the
/// number in one variant or in two.
std::optional<bool> PreferenceIn(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    QVariant value = reply.arguments().constFirst();
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const uint preference = value.toUInt();
    if (preference == 1)
        return true;
    return preference == 2 ? std::optional(false) : std::nullopt;
}

} // namespace

struct DesktopScheme::State
{
    explicit State(std::function<void()> callback) : changed(std::move(callback)), bus(session.Connection())
    {
        if (!bus.isConnected())
            return;
        // The timer stands for a slot of ours. Its timeout comes from the event loop, once for many changes.
        asking.setSingleShot(true);
        QObject::connect(&asking, &QTimer::timeout, &asking, [this] { Ask(); });
        bus.connect(service, path, settings, QStringLiteral("SettingChanged"), {group, key}, QString(),
                    &asking, SLOT(start()));
        const QDBusMessage reply = bus.call(Question(), QDBus::Block, longestWait);
        dark = PreferenceIn(reply);
        if (reply.type() != QDBusMessage::ReplyMessage)
            asking.start();
    }

    void Ask()
    {
        auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(Question()), &asking);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &asking,
                         [this](QDBusPendingCallWatcher* finished) {
                             finished->deleteLater();
                             const auto before = dark;
                             // A portal that is gone has told what the desktop looks like all the same.
                             if (!finished->isError())
                                 dark = PreferenceIn(finished->reply());
                             if (dark != before)
                                 changed();
                         });
    }

    const std::function<void()> changed;
    utility::SessionBus session;
    QDBusConnection& bus;
    QTimer asking;
    std::optional<bool> dark;
};

DesktopScheme::DesktopScheme(std::function<void()> changed)
    : state(std::make_unique<State>(std::move(changed)))
{}

DesktopScheme::~DesktopScheme() = default;

std::optional<bool> DesktopScheme::AsksForDark() const
{
    return state->dark;
}

} // namespace zetui::skins
