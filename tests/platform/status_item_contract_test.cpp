// SPDX-License-Identifier: MIT
#include "platform/linux/status_notifier_item.h"
#include "support/bus_contract_test.h"
#include "support/fake_status_host.h"
#include "support/fake_status_item.h"

namespace wrenfold {

namespace {

/// A status item, and the host that a test has in its hand.
struct Subject
{
    virtual ~Subject() = default;
    virtual StatusItem &item() = 0;
    virtual bool waitUntilShown() = 0;
    virtual void click() = 0;
    virtual void askForMenu() = 0;
    /// The titles of the rows, each after a minus if it is disabled.
    virtual QStringList openMenu() = 0;
    virtual void choose(const QString &title) = 0;
    [[nodiscard]] virtual QString toolTip() = 0;
};

struct FakeSubject : Subject
{
    FakeStatusItem fake;

    StatusItem &item() override { return fake; }
    bool waitUntilShown() override { return fake.isShown(); }
    void click() override { fake.click(); }
    void askForMenu() override { fake.askForMenu(); }
    QStringList openMenu() override
    {
        QStringList titles;
        const QList<StatusMenuRow> rows = fake.openMenu();
        for (const StatusMenuRow &row : rows)
            titles.append((row.isEnabled && row.command != 0) || row.isSeparator()
                              ? row.title
                              : QStringLiteral("-") + row.title);
        return titles;
    }
    void choose(const QString &title) override { (void)fake.choose(title); }
    QString toolTip() override { return fake.content().toolTip; }
};

struct RealSubject : Subject
{
    FakeStatusHost host;
    StatusNotifierItem real;

    explicit RealSubject(const QString &busAddress)
        : host(busAddress)
    {
        if (!host.arrive())
            qFatal("the host does not come");
    }
    StatusItem &item() override { return real; }
    bool waitUntilShown() override
    {
        return QTest::qWaitFor([this] { return real.isHosted(); });
    }
    void click() override { host.call(QStringLiteral("Activate"), {0, 25}); }
    void askForMenu() override { host.call(QStringLiteral("ContextMenu"), {0, 25}); }
    QStringList openMenu() override
    {
        QStringList titles;
        const QList<DBusMenuLayout> rows = host.openMenu();
        for (const DBusMenuLayout &row : rows) {
            const bool isEnabled = row.properties.value(QStringLiteral("enabled"), true).toBool();
            titles.append((isEnabled ? QString() : QStringLiteral("-")) +
                          row.properties.value(QStringLiteral("label")).toString());
        }
        return titles;
    }
    void choose(const QString &title) override
    {
        const QList<DBusMenuLayout> rows = host.openMenu();
        for (const DBusMenuLayout &row : rows) {
            if (row.properties.value(QStringLiteral("label")).toString() == title)
                host.press(row.id);
        }
    }
    QString toolTip() override
    {
        const auto toolTip = qdbus_cast<StatusToolTip>(host.property(QStringLiteral("ToolTip")));
        return toolTip.title + u'\n' + toolTip.text;
    }
};

StatusItemContent content(const QString &toolTip)
{
    const auto paint = [](int side) { return QImage(side, side, QImage::Format_ARGB32_Premultiplied); };
    return {{QStringLiteral("pin"), paint}, {}, toolTip};
}

} // namespace

/// One suite over the fake and the real status item.
class StatusItemContractTest : public BusContractTest
{
    Q_OBJECT

private:
    [[nodiscard]] std::unique_ptr<Subject> makeSubject() const
    {
        return makeOneOf<Subject, FakeSubject, RealSubject>();
    }

    /// The item is in the status area with its first content.
    [[nodiscard]] bool show(Subject &subject)
    {
        m_calls.clear();
        subject.item().show({.activate = [this] { m_calls << QStringLiteral("activate"); },
                             .openMenu = [this] { m_calls << QStringLiteral("menu"); },
                             .menuRows = [this] { return m_rows; },
                             .chooseRow = [this](int command) { m_calls << QString::number(command); },
                             .labelShown =
                                 [this](bool isShown) {
                                     m_calls
                                         << (isShown ? QStringLiteral("label") : QStringLiteral("no label"));
                                 }});
        const bool isTold = m_calls == QStringList{QStringLiteral("no label")};
        subject.item().setContent(content(QStringLiteral("Wren Fold\none")));
        const bool isShown = subject.waitUntilShown();
        m_calls.clear();
        return isTold && isShown;
    }

    QStringList m_calls;
    QList<StatusMenuRow> m_rows{{QStringLiteral("NOW"), 0, false},
                                {},
                                {QStringLiteral("show"), 4, true},
                                {QStringLiteral("not yet"), 6, false}};

private Q_SLOTS:
    void aClickAndTheWishForAMenuAreTold()
    {
        const auto subject = makeSubject();
        QVERIFY(show(*subject));
        subject->click();
        QTRY_COMPARE(m_calls, QStringList{QStringLiteral("activate")});
        subject->askForMenu();
        QTRY_COMPARE(m_calls.last(), QStringLiteral("menu"));
        QCOMPARE(m_calls.size(), 2);
    }

    void theMenuShowsTheRowsOfNow()
    {
        const auto subject = makeSubject();
        QVERIFY(show(*subject));
        const QStringList titles{QStringLiteral("-NOW"), QString(), QStringLiteral("show"),
                                 QStringLiteral("-not yet")};
        QCOMPARE(subject->openMenu(), titles);
        m_rows[2].title = QStringLiteral("hide");
        QCOMPARE(subject->openMenu().at(2), QStringLiteral("hide"));
        m_rows[2].title = QStringLiteral("show");
        subject->item().updateMenu();
        QCOMPARE(subject->openMenu(), titles);
    }

    void onlyARowThatIsEnabledIsChosen()
    {
        const auto subject = makeSubject();
        QVERIFY(show(*subject));
        subject->choose(QStringLiteral("NOW"));
        subject->choose(QStringLiteral("not yet"));
        subject->choose(QStringLiteral("show"));
        QTRY_COMPARE(m_calls, QStringList{QStringLiteral("4")});
    }

    void theLastContentIsShown()
    {
        const auto subject = makeSubject();
        QVERIFY(show(*subject));
        QCOMPARE(subject->toolTip(), QStringLiteral("Wren Fold\none"));
        subject->item().setContent(content(QStringLiteral("Wren Fold\ntwo\nthree")));
        QCOMPARE(subject->toolTip(), QStringLiteral("Wren Fold\ntwo\nthree"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::StatusItemContractTest)
#include "status_item_contract_test.moc"
