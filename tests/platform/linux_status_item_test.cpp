// SPDX-License-Identifier: MIT
#include "platform/linux/linux_status_item.h"
#include "support/fake_status_host.h"
#include "support/fake_status_item.h"
#include "support/private_bus.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

StatusItemContent content(const QString &icon)
{
    return {{icon, [](int side) { return QImage(side, side, QImage::Format_ARGB32); }}, {}, icon};
}

} // namespace

/// Which of the two ways into the status area is taken.
class LinuxStatusItemTest : public TestCase
{
    Q_OBJECT

private:
    /// An item whose tray icon, while there is one, is `m_trayIcon`.
    [[nodiscard]] std::unique_ptr<LinuxStatusItem> makeItem()
    {
        m_labels.clear();
        auto item = std::make_unique<LinuxStatusItem>([this] {
            auto icon = std::make_unique<FakeStatusItem>();
            m_trayIcons.append(icon.get());
            return icon;
        });
        m_trayIcons.clear();
        const auto menuRows = [] { return QList<StatusMenuRow>{{QStringLiteral("show"), 4}}; };
        item->show({.activate = [this] { ++m_clicks; },
                    .openMenu = [] {},
                    .menuRows = menuRows,
                    .chooseRow = [](int) {},
                    .labelShown = [this](bool isShown) { m_labels << isShown; }});
        item->setContent(content(QStringLiteral("pin")));
        return item;
    }

    PrivateBus m_bus;
    QList<FakeStatusItem *> m_trayIcons; ///< All that were made; only the last may live.
    QList<bool> m_labels;
    int m_clicks = 0;

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(m_bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        qputenv("XDG_RUNTIME_DIR", dataHome().toUtf8());
    }

    void withoutAHostThereIsATrayIcon()
    {
        const auto item = makeItem();
        QVERIFY(m_trayIcons.isEmpty()); // It is not known yet.
        QTRY_COMPARE(m_trayIcons.size(), 1);
        QCOMPARE(m_trayIcons[0]->content(), content(QStringLiteral("pin")));
        m_trayIcons[0]->click();
        QCOMPARE(m_clicks, 1);
        item->setContent(content(QStringLiteral("pin-2")));
        QCOMPARE(m_trayIcons[0]->content(), content(QStringLiteral("pin-2")));
        item->updateMenu();
        QCOMPARE(m_trayIcons[0]->menuUpdates(), 1);
        QCOMPARE(item->availability(), Availability());
        QCOMPARE(m_labels, QList<bool>{false});
    }

    void aHostThatComesTakesItOverAndGivesItBack()
    {
        const auto item = makeItem();
        QTRY_COMPARE(m_trayIcons.size(), 1);
        FakeStatusHost host(m_bus.address());
        QVERIFY(host.arrive({QStringLiteral("org.ayatana.indicator.application")}));
        QTRY_COMPARE(m_labels, (QList<bool>{false, true}));
        QCOMPARE(item->labelAvailability(), Availability());
        item->setContent(content(QStringLiteral("pin-2")));
        QVERIFY(host.property(QStringLiteral("IconName")).toString().contains(QStringLiteral("pin-2")));
        host.leave();
        QTRY_COMPARE(m_trayIcons.size(), 2);
        QCOMPARE(m_trayIcons[1]->content(), content(QStringLiteral("pin-2")));
        QCOMPARE(m_labels, (QList<bool>{false, true, false}));
    }

    void whereAHostIsThereNoTrayIconIsMade()
    {
        FakeStatusHost host(m_bus.address());
        QVERIFY(host.arrive());
        const auto item = makeItem();
        QTRY_COMPARE(item->availability(), Availability());
        QCOMPARE(item->labelAvailability().level, Availability::Level::Limited);
        QVERIFY(m_trayIcons.isEmpty());
    }

    void withoutTraysThereIsNothing()
    {
        LinuxStatusItem item({});
        bool isKnown = false;
        item.show({[] {}, [] {}, [] { return QList<StatusMenuRow>(); }, [](int) {}, [](bool) {}});
        StatusNotifierItem other([&] { isKnown = true; });
        other.show({[] {}, [] {}, [] { return QList<StatusMenuRow>(); }, [](int) {}, [](bool) {}});
        QTRY_VERIFY(isKnown);
        QCOMPARE(item.availability().level, Availability::Level::NotAvailable);
        QCOMPARE(item.labelAvailability().level, Availability::Level::NotAvailable);
        item.updateMenu();
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::LinuxStatusItemTest)
#include "linux_status_item_test.moc"
