// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_menu.h"

#include "platform/linux/host_texts.h"

#include <QDBusError>
#include <QDBusMessage>

#include <algorithm>
#include <utility>

namespace wrenfold {
namespace {

const auto interface = QStringLiteral("com.canonical.dbusmenu");

constexpr int rootId = 0;
constexpr int firstInformingId = 0x10000; ///< For rows without a command; above every command.

QVariantMap rowProperties(const StatusMenuRow &row)
{
    if (row.isSeparator())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    return {{QStringLiteral("label"), hostMenuLabel(row.title)},
            {QStringLiteral("enabled"), row.isEnabled && row.command != 0}};
}

QVariantMap onlyNamed(const QVariantMap &properties, const QStringList &names)
{
    if (names.isEmpty())
        return properties;
    QVariantMap named;
    for (const QString &name : names) {
        if (properties.contains(name))
            named.insert(name, properties.value(name));
    }
    return named;
}

QDBusMessage noSuchRow(const QDBusMessage &call)
{
    return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no such row"));
}

} // namespace

DBusMenu::DBusMenu()
    : DBusObject(interface)
{
    registerDBusMenuValues();
}

void DBusMenu::setActions(std::function<QList<StatusMenuRow>()> menuRows,
                          std::function<void(int command)> chooseRow)
{
    m_menuRows = std::move(menuRows);
    m_chooseRow = std::move(chooseRow);
}

std::optional<QDBusMessage> DBusMenu::update()
{
    if (!refresh())
        return {};
    QDBusMessage signal = QDBusMessage::createSignal(path(), interface, QStringLiteral("LayoutUpdated"));
    signal << m_revision << rootId;
    return signal;
}

QDBusMessage DBusMenu::answerTo(const QDBusMessage &call)
{
    const QString method = call.member() + u'(' + call.signature() + u')';
    const QVariantList arguments = call.arguments();
    if (method == QLatin1String("GetLayout(iias)"))
        return layout(call);
    if (method == QLatin1String("GetGroupProperties(aias)"))
        return groupProperties(call);
    if (method == QLatin1String("GetProperty(is)"))
        return property(call);
    if (method == QLatin1String("AboutToShow(i)"))
        return call.createReply(refresh());
    if (method == QLatin1String("AboutToShowGroup(ai)"))
        return aboutToShowGroup(call);
    if (method == QLatin1String("Event(isvu)")) {
        handleEvent(arguments.at(0).toInt(), arguments.at(1).toString());
        return call.createReply();
    }
    if (method == QLatin1String("EventGroup(a(isvu))"))
        return eventGroup(call);
    return {};
}

QVariantMap DBusMenu::properties()
{
    return {{QStringLiteral("Version"), 3U},
            {QStringLiteral("TextDirection"), QStringLiteral("ltr")},
            {QStringLiteral("Status"), QStringLiteral("normal")},
            {QStringLiteral("IconThemePath"), QStringList()}};
}

QDBusMessage DBusMenu::layout(const QDBusMessage &call)
{
    refresh();
    const QVariantList arguments = call.arguments();
    const QStringList names = arguments.at(2).toStringList();
    const std::optional<DBusMenuItem> parent = item(arguments.at(0).toInt());
    if (!parent)
        return noSuchRow(call);
    DBusMenuLayout layout{parent->id, onlyNamed(parent->properties, names), {}};
    const bool isAlone = arguments.at(1).toInt() == 0;
    if (parent->id == rootId && !isAlone) {
        const QList<DBusMenuItem> all = items();
        for (const DBusMenuItem &each : all.sliced(1))
            layout.children.append({each.id, onlyNamed(each.properties, names), {}});
    }
    return call.createReply({m_revision, QVariant::fromValue(layout)});
}

QDBusMessage DBusMenu::groupProperties(const QDBusMessage &call) const
{
    const auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    const QStringList names = call.arguments().at(1).toStringList();
    QList<DBusMenuItem> answer;
    const QList<DBusMenuItem> all = items();
    for (const DBusMenuItem &each : all) {
        if (ids.isEmpty() || ids.contains(each.id))
            answer.append({each.id, onlyNamed(each.properties, names)});
    }
    return call.createReply(QVariant::fromValue(answer));
}

QDBusMessage DBusMenu::property(const QDBusMessage &call) const
{
    const QString name = call.arguments().at(1).toString();
    const std::optional<DBusMenuItem> asked = item(call.arguments().at(0).toInt());
    if (!asked || !asked->properties.contains(name))
        return noSuchRow(call);
    return call.createReply(QVariant::fromValue(QDBusVariant(asked->properties.value(name))));
}

QDBusMessage DBusMenu::aboutToShowGroup(const QDBusMessage &call)
{
    QList<int> toUpdate;
    QList<int> unknown;
    const bool hasChanged = refresh();
    const auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    for (const int id : ids) {
        if (!item(id))
            unknown.append(id);
        else if (id == rootId && hasChanged)
            toUpdate.append(id);
    }
    return call.createReply({QVariant::fromValue(toUpdate), QVariant::fromValue(unknown)});
}

QDBusMessage DBusMenu::eventGroup(const QDBusMessage &call)
{
    QList<int> unknown;
    const auto events = qdbus_cast<QList<DBusMenuEvent>>(call.arguments().at(0));
    for (const DBusMenuEvent &event : events) {
        if (!item(event.id))
            unknown.append(event.id);
        handleEvent(event.id, event.name);
    }
    return call.createReply(QVariant::fromValue(unknown));
}

bool DBusMenu::refresh()
{
    const QList<StatusMenuRow> rows = m_menuRows ? m_menuRows() : QList<StatusMenuRow>();
    if (rows == m_rows)
        return false;
    m_rows = rows;
    ++m_revision;
    return true;
}

QList<DBusMenuItem> DBusMenu::items() const
{
    QList<DBusMenuItem> items{{rootId, {{QStringLiteral("children-display"), QStringLiteral("submenu")}}}};
    int informingId = firstInformingId;
    for (const StatusMenuRow &row : m_rows) {
        items.append({row.command != 0 ? row.command : informingId, rowProperties(row)});
        ++informingId;
    }
    return items;
}

std::optional<DBusMenuItem> DBusMenu::item(int id) const
{
    const QList<DBusMenuItem> all = items();
    const auto found =
        std::find_if(all.cbegin(), all.cend(), [id](const DBusMenuItem &each) { return each.id == id; });
    return found == all.cend() ? std::nullopt : std::optional(*found);
}

void DBusMenu::handleEvent(int id, const QString &name)
{
    if (name != QLatin1String("clicked"))
        return;
    // From the event loop, because the host waits for the answer, and what the row does may take its time.
    QMetaObject::invokeMethod(
        this,
        [this, id] {
            const QList<StatusMenuRow> rows = m_menuRows();
            const bool canBeChosen = std::any_of(rows.cbegin(), rows.cend(), [id](const StatusMenuRow &row) {
                return row.command == id && row.command != 0 && row.isEnabled;
            });
            if (canBeChosen)
                m_chooseRow(id);
        },
        Qt::QueuedConnection);
}

} // namespace wrenfold
