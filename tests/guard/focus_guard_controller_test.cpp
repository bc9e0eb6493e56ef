// SPDX-License-Identifier: MIT
#include "app/application_id.h"
#include "app/debug_log.h"
#include "guard/focus_guard_controller.h"
#include "model/store_on_fakes.h"
#include "support/fake_frontmost_application.h"
#include "support/log_capture.h"
#include "support/test_case.h"

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

const RunningApplication chat = {QStringLiteral("org.example.Chat"), QStringLiteral("Chat")};
const RunningApplication game = {QStringLiteral("org.example.Game"), QStringLiteral("Game")};
const RunningApplication editor = {QStringLiteral("org.example.Editor"), QStringLiteral("Editor")};

QByteArray documentBlocking(const QList<BlockedApp> &apps)
{
    SavedState state;
    state.blockedApps = apps;
    return encodeSavedState(state);
}

BlockedApp entry(const RunningApplication &application)
{
    return {*application.bundleIdentifier, *application.localizedName, application.bundleIdentifier,
            std::nullopt};
}

/// A guard that is on, on a desktop where a test says what is in front.
struct Guard
{
    StoreOnFakes fakes;
    FocusStore &store = fakes.store;
    FakeFrontmostApplication desktop;
    QStringList panel; ///< What the guard did with it.
    FocusGuardController controller;

    explicit Guard(const QList<BlockedApp> &apps = {entry(chat), entry(game)}, bool isOn = true)
        : fakes(documentBlocking(apps))
        , controller(store, {desktop, fakes.clock, fakes.sounds, fakes.notifier},
                     {[this] { panel.append(QStringLiteral("raise")); },
                      [this] { panel.append(QStringLiteral("show")); }})
    {
        if (isOn)
            store.isFocusGuardEnabled.set(true);
    }

    void bringToFront(const std::optional<RunningApplication> &application)
    {
        desktop.setCurrent(application);
    }
    void pass(std::chrono::milliseconds time) { fakes.clock.advance(time); }
    [[nodiscard]] QString status() const { return store.sortStatus.value(); }
    [[nodiscard]] qsizetype hides() const { return desktop.hidden().size(); }
};

const QString chatWarning = QStringLiteral("⚠️ Focus Guard: Chat を検知（続けないで）");
const QString gameWarning = QStringLiteral("⚠️ Focus Guard: Game を検知（続けないで）");
const QString chatBlocked = QStringLiteral("🛡 Chat をブロックしました");

} // namespace

class FocusGuardControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void withTheGuardOffNothingHappens()
    {
        Guard guard({entry(chat)}, false);
        guard.bringToFront(chat);
        guard.pass(1min);
        QCOMPARE(guard.status(), QString());
        QCOMPARE(guard.hides(), 0);
        QVERIFY(guard.panel.isEmpty());
        QVERIFY(!guard.desktop.isStarted());
        QCOMPARE(guard.fakes.clock.pendingCalls(), 0);
    }

    void turningTheGuardOffClearsAPendingWarning()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(2400ms);
        QCOMPARE(guard.panel.size(), 1);
        const LogCapture log;
        guard.store.isFocusGuardEnabled.set(false);
        QCOMPARE(LogCapture::take(), QStringList{QStringLiteral("info guard: guard stopped")});
        QVERIFY(!guard.desktop.isStarted());
        guard.pass(1min);
        QCOMPARE(guard.hides(), 0);
        guard.store.isFocusGuardEnabled.set(true);
        QCOMPARE(guard.panel, (QStringList{QStringLiteral("raise"), QStringLiteral("raise")}));
        QCOMPARE(guard.hides(), 0);
    }

    void aGuardThatIsSavedAsOnStartsWithTheProgram()
    {
        SavedState state;
        state.blockedApps = {entry(chat)};
        state.isFocusGuardEnabled = true;
        StoreOnFakes fakes(encodeSavedState(state));
        FakeFrontmostApplication desktop;
        desktop.setCurrent(chat);
        const LogCapture log;
        const FocusGuardController controller(
            fakes.store, {desktop, fakes.clock, fakes.sounds, fakes.notifier}, {[] {}, [] {}});
        QCOMPARE(LogCapture::take(),
                 (QStringList{QStringLiteral("info guard: guard started"),
                              QStringLiteral("info guard: stage1 warn app=Chat id=org.example.Chat")}));
    }

    void theWarningComesWithinThePoll()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(799ms);
        QCOMPARE(guard.status(), QString());
        const LogCapture log;
        guard.pass(1ms);
        QCOMPARE(guard.status(), chatWarning);
        QCOMPARE(guard.fakes.sounds.take(), QList<Sound>{Sound::Tink});
        QCOMPARE(guard.panel, QStringList{QStringLiteral("raise")});
        QCOMPARE(LogCapture::take(),
                 QStringList{QStringLiteral("info guard: stage1 warn app=Chat id=org.example.Chat")});
        QVERIFY(guard.fakes.notificationCenter.take().isEmpty());
    }

    void theHideComesWithTheFirstPollAfterTheGraceInterval()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms);
        (void)guard.fakes.sounds.take();
        const LogCapture log;
        guard.pass(3199ms);
        QCOMPARE(guard.hides(), 0);
        guard.pass(1ms);
        QCOMPARE(guard.desktop.hidden(), QList<RunningApplication>{chat});
        QCOMPARE(guard.status(), chatBlocked);
        QCOMPARE(guard.fakes.sounds.take(), QList<Sound>{Sound::Funk});
        QCOMPARE(guard.panel, (QStringList{QStringLiteral("raise"), QStringLiteral("show")}));
        QCOMPARE(guard.fakes.notificationCenter.take(),
                 (QList<Notification>{{QStringLiteral("wrenfold.guard.block"), QStringLiteral("Focus Guard"),
                                       QStringLiteral("Chat をブロックしました — NOW に戻りましょう")}}));
        QCOMPARE(LogCapture::take(),
                 QStringList{QStringLiteral("info guard: stage2 hide app=Chat id=org.example.Chat")});
    }

    void thePanelComesWhenTheRestIsDoneAndTheNotificationAfterIt()
    {
        StoreOnFakes fakes(documentBlocking({entry(chat)}));
        FakeFrontmostApplication desktop;
        QStringList seen;
        const auto look = [&](const char *what) {
            return [&, what] {
                seen.append(QStringLiteral("%1: hidden %2, %3 sound, %4, %5 posted, log %6")
                                .arg(QLatin1String(what))
                                .arg(desktop.hidden().size())
                                .arg(fakes.sounds.take().size())
                                .arg(fakes.store.sortStatus.value())
                                .arg(fakes.notificationCenter.take().size())
                                .arg(LogCapture::take().size()));
            };
        };
        FocusGuardController controller(fakes.store, {desktop, fakes.clock, fakes.sounds, fakes.notifier},
                                        {look("raise"), look("show")});
        fakes.store.isFocusGuardEnabled.set(true);
        desktop.setCurrent(chat);
        const LogCapture log;
        fakes.clock.advance(800ms);
        (void)LogCapture::take();
        fakes.clock.advance(3200ms);
        QCOMPARE(seen, (QStringList{
                           QStringLiteral("raise: hidden 0, 1 sound, %1, 0 posted, log 0").arg(chatWarning),
                           QStringLiteral("show: hidden 1, 1 sound, %1, 0 posted, log 0").arg(chatBlocked)}));
        QCOMPARE(fakes.notificationCenter.take().size(), 1);
        QCOMPARE(LogCapture::take().size(), 1);
    }

    void anApplicationThatStaysIsHiddenAgainWithoutANewWarning()
    {
        Guard guard;
        guard.desktop.setCanHide(false);
        guard.bringToFront(chat);
        guard.pass(800ms + 3200ms);
        QCOMPARE(guard.hides(), 1);
        guard.pass(3199ms);
        QCOMPARE(guard.hides(), 1);
        guard.pass(1ms);
        QCOMPARE(guard.hides(), 2);
        QCOMPARE(guard.panel,
                 (QStringList{QStringLiteral("raise"), QStringLiteral("show"), QStringLiteral("show")}));
    }

    void ourselvesInFrontNeverCountAsBlocked()
    {
        const BlockedApp everything = {QStringLiteral("x"), QStringLiteral("wren"), applicationID(),
                                       std::nullopt};
        Guard guard({everything});
        guard.bringToFront(RunningApplication{applicationID(), QStringLiteral("Wren Fold")});
        guard.pass(1min);
        QCOMPARE(guard.status(), QString());
        QCOMPARE(guard.hides(), 0);
    }

    void ourselvesInFrontClearAWarning()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms);
        guard.bringToFront(RunningApplication{applicationID(), std::nullopt});
        guard.pass(800ms);
        guard.bringToFront(chat);
        guard.pass(2400ms);
        QCOMPARE(guard.hides(), 0);
        QCOMPARE(guard.panel, (QStringList{QStringLiteral("raise"), QStringLiteral("raise")}));
    }

    void switchingToAnotherBlockedApplicationWarnsAboutThatOne()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms + 2400ms);
        guard.bringToFront(game);
        guard.pass(800ms);
        QCOMPARE(guard.status(), gameWarning);
        QCOMPARE(guard.hides(), 0);
        guard.pass(3200ms);
        QCOMPARE(guard.desktop.hidden(), QList<RunningApplication>{game});
    }

    void leavingInTimeClearsTheWarningAndReturningWarnsAfresh()
    {
        DebugLog::setVerbosePreference([] { return true; });
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms + 1600ms);
        const LogCapture log;
        guard.bringToFront(editor);
        guard.pass(800ms);
        DebugLog::setVerbosePreference({});
        QCOMPARE(LogCapture::take(),
                 QStringList{QStringLiteral("debug guard: left blocked app — clear warning")});
        guard.pass(1min);
        guard.bringToFront(chat);
        guard.pass(800ms + 2400ms);
        QCOMPARE(guard.hides(), 0);
        QCOMPARE(guard.panel.size(), 2);
        guard.pass(800ms);
        QCOMPARE(guard.hides(), 1);
    }

    void nothingInFrontClearsTheWarning()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms);
        guard.bringToFront(std::nullopt);
        guard.pass(800ms);
        guard.bringToFront(chat);
        guard.pass(2400ms);
        QCOMPARE(guard.hides(), 0);
    }

    void anApplicationWithoutIdentifierIsKnownByItsName()
    {
        Guard guard({{QStringLiteral("xterm"), QStringLiteral("xterm"), std::nullopt, std::nullopt}});
        guard.bringToFront(RunningApplication{std::nullopt, QStringLiteral("XTerm")});
        const LogCapture log;
        guard.pass(800ms);
        QCOMPARE(LogCapture::take(),
                 QStringList{QStringLiteral("info guard: stage1 warn app=XTerm id=XTerm")});
    }

    void anApplicationWithoutANameIsShownByItsIdentifier()
    {
        QCOMPARE(GuardedApplication({QStringLiteral("org.example.Chat"), std::nullopt}).displayName,
                 QStringLiteral("org.example.Chat"));
        QCOMPARE(GuardedApplication({}).key, QStringLiteral("unknown"));
        QCOMPARE(GuardedApplication({}).displayName, QStringLiteral("unknown"));
    }

    void aBlockedApplicationThatIsUnblockedUnderAWarningIsLeftAlone()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms);
        guard.store.removeBlockedApp(entry(chat));
        guard.pass(1min);
        QCOMPARE(guard.hides(), 0);
    }

    void aClockThatIsSetBackDelaysTheHideByOneGraceIntervalOnly()
    {
        Guard guard;
        guard.bringToFront(chat);
        guard.pass(800ms);
        guard.fakes.clock.setNow(guard.fakes.clock.now().addSecs(-3600));
        guard.pass(800ms + 3200ms);
        QCOMPARE(guard.hides(), 1);
    }

    void markupInANameStaysText()
    {
        const QString name = QStringLiteral("A & B_c <b>x</b>");
        Guard guard({{name, name, std::nullopt, std::nullopt}});
        guard.desktop.setCanHide(false);
        guard.bringToFront(RunningApplication{std::nullopt, name});
        guard.pass(800ms);
        QCOMPARE(guard.status(),
                 QStringLiteral("\u26A0\uFE0F Focus Guard: %1 を検知（続けないで）").arg(name));
        guard.pass(3200ms);
        QCOMPARE(guard.fakes.notificationCenter.take().constFirst().body,
                 QStringLiteral("A & B_c <b>x</b> をブロックしました — NOW に戻りましょう"));
    }

    void aGoneControllerFollowsNothing()
    {
        StoreOnFakes fakes(documentBlocking({entry(chat)}));
        FakeFrontmostApplication desktop;
        {
            const FocusGuardController controller(
                fakes.store, {desktop, fakes.clock, fakes.sounds, fakes.notifier}, {[] {}, [] {}});
            fakes.store.isFocusGuardEnabled.set(true);
        }
        QVERIFY(!desktop.isStarted());
        desktop.setCurrent(chat);
        fakes.clock.advance(1min);
        fakes.store.isFocusGuardEnabled.set(false);
        QCOMPARE(fakes.store.sortStatus.value(), QString());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusGuardControllerTest)
#include "focus_guard_controller_test.moc"
