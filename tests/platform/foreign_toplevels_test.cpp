// SPDX-License-Identifier: MIT
#include "platform/linux/foreign_toplevels.h"

#include "support/minimizing_compositor.h"
#include "support/test_case.h"

#include <QSignalSpy>

namespace wrenfold {
namespace {

bool isWriter(const QString &appID)
{
    return appID == QLatin1String("writer");
}

} // namespace

/// What is made of a compositor's events, with a compositor that minimises windows.
class ForeignToplevelsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowThatBecameActiveLastIsInFront()
    {
        MinimizingCompositor compositor;
        auto &writer = compositor.open("writer");
        writer.isActive = true;
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_COMPARE(toplevels->activeAppID(), QStringLiteral("writer"));
        auto &reader = compositor.open("reader");
        reader.isActive = true;
        compositor.tell(reader);
        QTRY_COMPARE(toplevels->activeAppID(), QStringLiteral("reader"));
        compositor.closeWindow(reader);
        QTRY_COMPARE(toplevels->activeAppID(), QStringLiteral("writer"));
        writer.isActive = false;
        compositor.tell(writer);
        QTRY_COMPARE(toplevels->activeAppID(), std::nullopt);
    }

    void aMinimizedWindowIsNotInFrontThoughStillActive()
    {
        MinimizingCompositor compositor;
        auto &writer = compositor.open("writer");
        writer.isActive = true;
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_COMPARE(toplevels->activeAppID(), QStringLiteral("writer"));
        writer.isMinimized = true;
        compositor.tell(writer);
        QTRY_COMPARE(toplevels->activeAppID(), std::nullopt);
    }

    void onlyTheWantedWindowsAreMinimized()
    {
        MinimizingCompositor compositor;
        auto &first = compositor.open("writer");
        auto &other = compositor.open("reader");
        auto &second = compositor.open("writer");
        second.isActive = true;
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_VERIFY(toplevels->activeAppID());
        QVERIFY(toplevels->isAnyShown(isWriter));
        toplevels->minimize(isWriter);
        QTRY_VERIFY(!toplevels->isAnyShown(isWriter));
        QVERIFY(first.isMinimized);
        QVERIFY(second.isMinimized);
        QVERIFY(!other.isMinimized);
        QCOMPARE(toplevels->activeAppID(), std::nullopt);
    }

    void aNewTitleIsNoChange()
    {
        MinimizingCompositor compositor;
        auto &writer = compositor.open("writer");
        writer.isActive = true;
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_VERIFY(toplevels->activeAppID());
        const QSignalSpy changes(toplevels.get(), &ForeignToplevels::changed);
        for (int i = 0; i < 100; ++i)
            compositor.changeTitle(writer, QByteArray::number(i));
        writer.isActive = false;
        compositor.tell(writer);
        QTRY_VERIFY(!toplevels->activeAppID());
        QCOMPARE(changes.size(), 1);
    }

    void aCompositorThatTellsOfNoWindowsIsGone()
    {
        MinimizingCompositor compositor(MinimizingCompositor::Windows::Untold);
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_VERIFY(toplevels->isGone());
    }

    void nothingIsInFrontOnceTheCompositorTellsNoMore()
    {
        MinimizingCompositor compositor;
        auto &writer = compositor.open("writer");
        writer.isActive = true;
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_VERIFY(toplevels->activeAppID());
        const QSignalSpy endings(toplevels.get(), &ForeignToplevels::gone);
        compositor.finish();
        QTRY_COMPARE(endings.size(), 1);
        QVERIFY(toplevels->isGone());
        QCOMPARE(toplevels->activeAppID(), std::nullopt);
        toplevels->minimize(isWriter);
    }

    void aCompositorThatTakesNothingAnyMoreIsGone()
    {
        MinimizingCompositor compositor;
        compositor.open("writer").isActive = true;
        const auto toplevels = ForeignToplevels::follow();
        QVERIFY(toplevels);
        QTRY_VERIFY(toplevels->activeAppID());
        // It does not come to read in here. A socket holds some thousands of requests.
        for (int i = 0; i < 1'000'000 && !toplevels->isGone(); ++i)
            toplevels->minimize(isWriter);
        QVERIFY(toplevels->isGone());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::ForeignToplevelsTest)
#include "foreign_toplevels_test.moc"
