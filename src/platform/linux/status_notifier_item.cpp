// SPDX-License-Identifier: MIT
#include "platform/linux/status_notifier_item.h"

#include "platform/linux/host_texts.h"

#include <QDBusObjectPath>

#include <utility>

namespace wrenfold {
namespace {

const auto objectPath = QStringLiteral("/StatusNotifierItem");
const auto interface = QStringLiteral("org.kde.StatusNotifierItem");
const auto title = QStringLiteral("Wren Fold");

/// Hosts show nothing of an item that has nothing to show yet.
QString status(const StatusItemContent &content)
{
    return content.icon.name.isEmpty() ? QStringLiteral("Passive") : QStringLiteral("Active");
}

} // namespace

StatusNotifierItem::StatusNotifierItem(std::function<void()> hostChanged, std::chrono::milliseconds patience)
    : DBusObject(interface)
    , m_hostChanged(std::move(hostChanged))
    , m_host({{objectPath, this}, {DBusMenu::path(), &m_menu}}, patience)
{
    registerStatusNotifierValues();
    connect(&m_host, &StatusNotifierHost::changed, this, &StatusNotifierItem::followHost);
}

Availability StatusNotifierItem::availability() const
{
    if (isHosted())
        return {};
    return {Availability::Level::NotAvailable,
            QStringLiteral("This desktop shows no status items: add a status tray to its panel, or on GNOME "
                           "the extension AppIndicator Support.")};
}

Availability StatusNotifierItem::labelAvailability() const
{
    if (!isHosted())
        return availability();
    if (m_host.drawsLabels())
        return {};
    return {
        Availability::Level::Limited,
        QStringLiteral("This desktop shows no text beside status icons, so the icon itself shows the state: "
                       "for the text use a panel with Ayatana indicators.")};
}

void StatusNotifierItem::show(const Actions &actions)
{
    m_actions = actions;
    m_menu.setActions(actions.menuRows, actions.chooseRow);
    m_actions.labelShown(m_isLabelShown);
    m_host.connectToBus();
}

void StatusNotifierItem::setContent(const StatusItemContent &content)
{
    if (content == m_content)
        return;
    const StatusItemContent before = std::exchange(m_content, content);
    if (content.icon != before.icon) {
        m_pixmaps = statusPixmaps(content.icon);
        tell(QStringLiteral("NewIcon"));
    }
    if (status(content) != status(before))
        tell(QStringLiteral("NewStatus"), {status(content)});
    if (content.toolTip != before.toolTip)
        tell(QStringLiteral("NewToolTip"));
    if (content.label != before.label && m_isLabelShown) {
        const QString label = hostLine(content.label);
        tell(QStringLiteral("XAyatanaNewLabel"), {label, label});
    }
    if (m_actions.menuRows)
        m_host.connectToBus();
}

void StatusNotifierItem::updateMenu()
{
    if (!isHosted())
        return;
    if (const std::optional<QDBusMessage> signal = m_menu.update())
        m_host.tell(*signal);
}

QDBusMessage StatusNotifierItem::answerTo(const QDBusMessage &call)
{
    // From the event loop, because the host waits for the answer. Where the click was is not always told rightly.
    const auto answerAndDo = [this, &call](const std::function<void()> &action) {
        QMetaObject::invokeMethod(this, action, Qt::QueuedConnection);
        return call.createReply();
    };
    const QString method = call.member() + u'(' + call.signature() + u')';
    if (method == QLatin1String("Activate(ii)") || method == QLatin1String("SecondaryActivate(ii)"))
        return answerAndDo(m_actions.activate);
    if (method == QLatin1String("ContextMenu(ii)"))
        return answerAndDo(m_actions.openMenu);
    if (method == QLatin1String("Scroll(is)"))
        return call.createReply();
    return {};
}

QVariantMap StatusNotifierItem::properties()
{
    const auto noPixmaps = QVariant::fromValue(QList<StatusPixmap>());
    QVariantMap properties{{QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
                           {QStringLiteral("Id"), QStringLiteral("wrenfold")},
                           {QStringLiteral("Title"), title},
                           {QStringLiteral("Status"), status(m_content)},
                           {QStringLiteral("WindowId"), 0},
                           {QStringLiteral("IconThemePath"), QString()},
                           {QStringLiteral("IconName"), m_files.path(m_content.icon)},
                           {QStringLiteral("IconPixmap"), QVariant::fromValue(m_pixmaps)},
                           {QStringLiteral("IconAccessibleDesc"), title},
                           {QStringLiteral("OverlayIconName"), QString()},
                           {QStringLiteral("OverlayIconPixmap"), noPixmaps},
                           {QStringLiteral("AttentionIconName"), QString()},
                           {QStringLiteral("AttentionIconPixmap"), noPixmaps},
                           {QStringLiteral("AttentionMovieName"), QString()},
                           {QStringLiteral("ToolTip"), QVariant::fromValue(statusToolTip(m_content.toolTip))},
                           {QStringLiteral("ItemIsMenu"), false},
                           {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(DBusMenu::path()))}};
    // There are hosts that draw no icon where the label merely exists.
    if (const QString label = hostLine(m_content.label); m_isLabelShown && !label.isEmpty()) {
        properties.insert(QStringLiteral("XAyatanaLabel"), label);
        properties.insert(QStringLiteral("XAyatanaLabelGuide"), label);
    }
    return properties;
}

void StatusNotifierItem::tell(const QString &signal, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(objectPath, interface, signal);
    message.setArguments(arguments);
    m_host.tell(message);
}

void StatusNotifierItem::followHost()
{
    if (m_isLabelShown != m_host.drawsLabels()) {
        m_isLabelShown = m_host.drawsLabels();
        m_actions.labelShown(m_isLabelShown);
        // The host read the item when it was told of it, and so without the label.
        const QString label = m_isLabelShown ? hostLine(m_content.label) : QString();
        tell(QStringLiteral("XAyatanaNewLabel"), {label, label});
    }
    if (m_hostChanged)
        m_hostChanged();
}

} // namespace wrenfold
