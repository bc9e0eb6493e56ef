// SPDX-License-Identifier: MIT
#include "platform/linux/status_notifier_item.h"
#include "support/fake_status_host.h"
#include "support/private_bus.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

const auto label = QStringLiteral("label");
const auto clicked = QStringLiteral("clicked");

DBusMenuEvent menuEvent(int id, const QString &name)
{
    return {id, name, QDBusVariant(0), 0U};
}

} // namespace

/// The status item's menu, as hosts of different manners read it.
class DBusMenuTest : public TestCase
{
    Q_OBJECT

private:
    /// The menu's number of changes and its rows, by one call.
    [[nodiscard]] std::pair<uint, QList<DBusMenuLayout>> layout(int parent = 0, int depth = -1,
                                                                const QStringList &names = {})
    {
        const QVariantList answer = m_host->callMenu(QStringLiteral("GetLayout"), {parent, depth, names});
        return {answer.value(0).toUInt(), qdbus_cast<DBusMenuLayout>(answer.value(1)).children};
    }
    [[nodiscard]] QList<int> ids()
    {
        QList<int> ids;
        for (const DBusMenuLayout &row : layout().second)
            ids << row.id;
        return ids;
    }
    /// What the item has said until now.
    [[nodiscard]] QStringList said()
    {
        (void)m_host->properties(); // Whatever was on its way has come.
        return m_host->takeSignals();
    }

    PrivateBus m_bus;
    std::unique_ptr<FakeStatusHost> m_host;
    std::unique_ptr<StatusNotifierItem> m_item;
    QList<StatusMenuRow> m_rows;
    QList<int> m_chosen;

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(m_bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        qputenv("XDG_RUNTIME_DIR", dataHome().toUtf8());
        m_host = std::make_unique<FakeStatusHost>(m_bus.address());
        QVERIFY(m_host->arrive());
        m_item = std::make_unique<StatusNotifierItem>();
        m_item->show({[] {}, [] {}, [this] { return m_rows; }, [this](int command) { m_chosen << command; },
                      [](bool) {}});
        QTRY_VERIFY(m_item->isHosted());
    }

    void init()
    {
        TestCase::init();
        m_rows = {{QStringLiteral("NOW"), 0, false},
                  {},
                  {QStringLiteral("show"), 4},
                  {QStringLiteral("later"), 6, false}};
        m_item->updateMenu();
        (void)said();
        m_chosen.clear();
    }

    void cleanupTestCase()
    {
        m_item.reset();
        m_host.reset();
    }

    void rowsHaveTheirTitlesAndSeparatorsNone()
    {
        const QList<DBusMenuLayout> rows = layout().second;
        QCOMPARE(rows.size(), 4);
        QCOMPARE(rows[0].properties,
                 (QVariantMap{{label, QStringLiteral("NOW")}, {QStringLiteral("enabled"), false}}));
        QCOMPARE(rows[1].properties, (QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}}));
        QCOMPARE(rows[2].properties,
                 (QVariantMap{{label, QStringLiteral("show")}, {QStringLiteral("enabled"), true}}));
        QCOMPARE(rows[3].properties.value(QStringLiteral("enabled")), QVariant(false));
    }

    void rowsAreNumberedByTheirCommandsAndTheOthersApart()
    {
        const QList<int> numbers = ids();
        QCOMPARE(numbers.mid(2), (QList<int>{4, 6}));
        QVERIFY(numbers[0] != numbers[1] && !numbers.mid(2).contains(numbers[0]));
    }

    void aHostGetsTheDepthAndThePropertiesItAsksFor()
    {
        QCOMPARE(layout(0, 0).second.size(), 0);
        QCOMPARE(layout(0, 1).second.size(), 4);
        QCOMPARE(layout(4).second.size(), 0);
        QCOMPARE(layout(0, 1, {label}).second.at(2).properties,
                 (QVariantMap{{label, QStringLiteral("show")}}));
        const auto group = qdbus_cast<QList<DBusMenuItem>>(
            m_host
                ->callMenu(QStringLiteral("GetGroupProperties"),
                           {QVariant::fromValue(QList<int>{4, 77}), QStringList{label}})
                .value(0));
        QCOMPARE(group.size(), 1);
        QCOMPARE(group[0].properties, (QVariantMap{{label, QStringLiteral("show")}}));
        const QVariantList property = m_host->callMenu(QStringLiteral("GetProperty"), {4, label});
        QCOMPARE(qvariant_cast<QDBusVariant>(property.value(0)).variant().toString(), QStringLiteral("show"));
    }

    void whatIsNotThereIsAnError()
    {
        const QVariantList error{QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs")};
        QCOMPARE(m_host->callMenu(QStringLiteral("GetLayout"), {77, -1, QStringList()}), error);
        QCOMPARE(m_host->callMenu(QStringLiteral("GetProperty"), {77, label}), error);
        QCOMPARE(m_host->callMenu(QStringLiteral("GetProperty"), {4, QStringLiteral("icon-data")}), error);
    }

    void aChangeIsSaidOnceWithAHigherNumber()
    {
        const uint before = layout().first;
        m_rows[2].title = QStringLiteral("hide");
        m_item->updateMenu();
        m_item->updateMenu();
        QCOMPARE(said(), QStringList{QStringLiteral("LayoutUpdated")});
        QCOMPARE(m_host->lastSignal().value(0).toUInt(), before + 1);
        QCOMPARE(m_host->lastSignal().value(1).toInt(), 0);
        QCOMPARE(layout().first, before + 1);
    }

    void theRowsAreAskedForAnewAtEachOpening()
    {
        const auto aboutToShow = [this] {
            return m_host->callMenu(QStringLiteral("AboutToShow"), {0}).value(0).toBool();
        };
        const auto aboutToShowGroup = [this](const QList<int> &ids) {
            const QVariantList answer =
                m_host->callMenu(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(ids)});
            return std::pair(qdbus_cast<QList<int>>(answer.value(0)),
                             qdbus_cast<QList<int>>(answer.value(1)));
        };
        QVERIFY(!aboutToShow());
        m_rows[2].title = QStringLiteral("one");
        QVERIFY(aboutToShow());
        QVERIFY(!aboutToShow());
        m_rows[2].title = QStringLiteral("two");
        QCOMPARE(aboutToShowGroup({0, 4, 77}), std::pair(QList<int>{0}, QList<int>{77}));
        QCOMPARE(aboutToShowGroup({0}), std::pair(QList<int>(), QList<int>()));
        m_rows[2].title = QStringLiteral("three");
        QCOMPARE(layout().second.at(2).properties.value(label).toString(), QStringLiteral("three"));
    }

    void aPressRunsTheCommand()
    {
        m_host->press(4);
        QTRY_COMPARE(m_chosen, QList<int>{4});
        const QVariantList answer = m_host->callMenu(
            QStringLiteral("EventGroup"),
            {QVariant::fromValue(QList<DBusMenuEvent>{menuEvent(0, QStringLiteral("opened")),
                                                      menuEvent(4, QStringLiteral("hovered")),
                                                      menuEvent(4, clicked), menuEvent(77, clicked)})});
        QCOMPARE(qdbus_cast<QList<int>>(answer.value(0)), QList<int>{77});
        QTRY_COMPARE(m_chosen, (QList<int>{4, 4}));
    }

    void aPressInAMenuOutOfDateMeansWhatWasReadThere()
    {
        const int informing = ids().first();
        m_rows = {{QStringLiteral("later"), 6}, {QStringLiteral("new"), 7}, {QStringLiteral("show"), 4}};
        m_host->press(4);
        QTRY_COMPARE(m_chosen, QList<int>{4});
        m_host->press(6);
        QTRY_COMPARE(m_chosen, (QList<int>{4, 6}));
        m_rows = {{QStringLiteral("show"), 4, false}, {QStringLiteral("new"), 7}};
        m_host->press(4); // Disabled by now.
        m_host->press(6); // Gone.
        m_host->press(informing);
        m_host->press(0);
        m_host->press(7);
        QTRY_COMPARE(m_chosen, (QList<int>{4, 6, 7}));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DBusMenuTest)
#include "dbus_menu_test.moc"
