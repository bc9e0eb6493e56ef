// SPDX-License-Identifier: MIT
#include "platform/linux/portal_appearance.h"

#include "app/debug_log.h"

#include <QDBusArgument>
#include <QDBusMessage>

#include <utility>

namespace wrenfold {
namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.Settings");

const auto appearanceNamespace = QStringLiteral("org.freedesktop.appearance");
const auto gnomeNamespace = QStringLiteral("org.gnome.desktop.interface");

/// The number that a setting says; 0, which stands for no preference, when it says none.
uint number(const QVariant &value)
{
    return value.userType() == QMetaType::UInt ? value.toUInt() : 0;
}

} // namespace

PortalAppearance::PortalAppearance(std::chrono::milliseconds patience)
    : m_patience(patience)
{
}

void PortalAppearance::follow(std::function<void(const Appearance &)> changed)
{
    m_changed = std::move(changed);
    if (!m_changed)
        return;
    m_bus.connect(m_patience, this, [this](const QDBusConnection &connection) { followPortal(connection); });
}

Appearance PortalAppearance::appearanceOf(const QMap<QString, QVariantMap> &settings)
{
    const QVariantMap portal = settings.value(appearanceNamespace);
    const QVariant animations = settings.value(gnomeNamespace).value(QStringLiteral("enable-animations"));
    constexpr uint dark = 1;
    constexpr uint light = 2;
    const uint colorScheme = number(portal.value(QStringLiteral("color-scheme")));
    Appearance appearance;
    if (colorScheme == dark || colorScheme == light)
        appearance.isDark = colorScheme == dark;
    appearance.isHighContrast = number(portal.value(QStringLiteral("contrast"))) == 1;
    // Portals that are older than the common setting hand on GNOME's.
    appearance.isMotionReduced = number(portal.value(QStringLiteral("reduced-motion"))) == 1 ||
                                 (animations.userType() == QMetaType::Bool && !animations.toBool());
    return appearance;
}

void PortalAppearance::followPortal(const QDBusConnection &connection)
{
    if (!connection.isConnected())
        return;
    m_connection.emplace(connection);
    // What a signal says is asked for, so a forged one does no harm.
    m_connection->follow(BusSignal::nameOwnerChanged(service), this, SLOT(nameOwnerChanged(QDBusMessage)));
    m_connection->follow({path, interface, QStringLiteral("SettingChanged")}, this,
                         SLOT(settingChanged(QDBusMessage)));
    ask();
}

void PortalAppearance::ask()
{
    if (m_isAsking) {
        m_isToAskAgain = true;
        return;
    }
    m_isAsking = true;
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    message << QStringList{appearanceNamespace, gnomeNamespace};
    callBus(*m_connection, message, static_cast<int>(m_patience.count()), this,
            [this](const QDBusMessage &answer) {
                m_isAsking = false;
                answerCame(answer);
                if (std::exchange(m_isToAskAgain, false))
                    ask();
            });
}

void PortalAppearance::answerCame(const QDBusMessage &answer)
{
    if (answer.signature() != QLatin1String("a{sa{sv}}")) {
        if (DebugLog::isVerbose())
            qCDebug(DebugLog::ui).noquote()
                << QStringLiteral("the desktop portal tells no appearance: ") + answer.errorMessage();
        return;
    }
    const Appearance appearance =
        appearanceOf(qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().value(0)));
    if (appearance == m_told || !m_changed)
        return;
    m_told = appearance;
    m_changed(appearance);
}

void PortalAppearance::nameOwnerChanged(const QDBusMessage &signal)
{
    const bool hasCome = !signal.arguments().value(2).toString().isEmpty();
    if (hasCome)
        ask();
}

void PortalAppearance::settingChanged(const QDBusMessage &signal)
{
    const QString changed = signal.arguments().value(0).toString();
    if (changed == appearanceNamespace || changed == gnomeNamespace)
        ask();
}

} // namespace wrenfold
