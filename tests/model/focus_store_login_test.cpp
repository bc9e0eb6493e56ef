// SPDX-License-Identifier: MIT
#include "model/login_item_service.h"
#include "model/store_on_fakes.h"
#include "support/log_capture.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

bool savedWish(const FakePreferences &preferences)
{
    const auto state = decodeSavedState(preferences.read(FocusStore::storageKey()).bytes);
    return state && state->launchAtLogin;
}

} // namespace

class FocusStoreLoginTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void eachStatusHasItsText_data()
    {
        QTest::addColumn<LoginItemStatus>("status");
        QTest::addColumn<QString>("text");
        QTest::newRow("not registered") << LoginItemStatus::NotRegistered << u("未登録");
        QTest::newRow("enabled") << LoginItemStatus::Enabled << u("有効");
        QTest::newRow("requires approval")
            << LoginItemStatus::RequiresApproval << u("システム設定での承認が必要");
        QTest::newRow("not found") << LoginItemStatus::NotFound
                                   << u("未検出（/Applications にインストール推奨）");
        QTest::newRow("any other") << LoginItemStatus(99) << u("不明");
    }

    void eachStatusHasItsText()
    {
        QFETCH(LoginItemStatus, status);
        QFETCH(QString, text);
        QCOMPARE(LoginItemService::statusText(status), text);

        StoreOnFakes fakes{TaskList()};
        fakes.loginItem.setStatus(status);
        fakes.store.refreshLoginItemStatus();
        QCOMPARE(fakes.store.loginItemStatus.value(), u("状態: ") + text);
        QCOMPARE(fakes.store.launchAtLogin.value(), status == LoginItemStatus::Enabled);
    }

    void refreshingNeverRegistersUnregistersOrSaves()
    {
        StoreOnFakes fakes{TaskList()};
        const int writes = fakes.preferences.writeCount();
        LogCapture log;
        for (const LoginItemStatus status : {LoginItemStatus::Enabled, LoginItemStatus::NotRegistered}) {
            fakes.loginItem.setStatus(status);
            fakes.store.refreshLoginItemStatus();
        }
        QCOMPARE(fakes.loginItem.changeCount(), 0);
        QCOMPARE(fakes.preferences.writeCount(), writes);
        QCOMPARE(log.take(), QStringList());
    }

    void loadingTakesTheSystemsWordAndNotTheDocuments_data()
    {
        QTest::addColumn<bool>("isWished");
        QTest::addColumn<bool>("isEnabled");
        QTest::addColumn<bool>("hasDocument");
        QTest::newRow("wished, not enabled") << true << false << true;
        QTest::newRow("not wished, enabled") << false << true << true;
        QTest::newRow("first launch, enabled") << false << true << false;
    }

    void loadingTakesTheSystemsWordAndNotTheDocuments()
    {
        QFETCH(bool, isWished);
        QFETCH(bool, isEnabled);
        QFETCH(bool, hasDocument);
        FakePreferences preferences;
        SavedState state;
        state.launchAtLogin = isWished;
        if (hasDocument)
            preferences.setValue(FocusStore::storageKey(), encodeSavedState(state));
        FakeClock clock;
        QuietServices quiet;
        quiet.loginItem().setStatus(isEnabled ? LoginItemStatus::Enabled : LoginItemStatus::NotRegistered);
        LogCapture log;
        const FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        QCOMPARE(store.launchAtLogin.value(), isEnabled);
        QCOMPARE(log.take(),
                 QStringList{hasDocument ? u("info store: loaded tasks=0 open=0 work=25m break=5m login=") +
                                               (isEnabled ? u("true") : u("false"))
                                         : u("info store: loaded defaults (first launch)")});
        QCOMPARE(quiet.loginItem().changeCount(), 0);
        QCOMPARE(preferences.writeCount(), 0);
    }

    void turningItOnRegistersAndSaves()
    {
        StoreOnFakes fakes{TaskList()};
        LogCapture log;
        fakes.store.setLaunchAtLogin(true);
        QCOMPARE(log.take(), (QStringList{u("info login: registered for login"),
                                          u("info store: launchAtLogin=true status=有効")}));
        QCOMPARE(fakes.store.loginItemStatus.value(), u("ログイン時に起動します（有効）"));
        QCOMPARE(fakes.loginItem.status(), LoginItemStatus::Enabled);
        QVERIFY(savedWish(fakes.preferences));
        QCOMPARE(fakes.preferences.writeCount(), 1);
    }

    void turningItOffUnregistersAndSaves()
    {
        StoreOnFakes fakes{TaskList()};
        fakes.store.setLaunchAtLogin(true);
        LogCapture log;
        fakes.store.setLaunchAtLogin(false);
        QCOMPARE(log.take(), (QStringList{u("info login: unregistered from login"),
                                          u("info store: launchAtLogin=false status=未登録")}));
        QCOMPARE(fakes.store.loginItemStatus.value(), u("ログイン起動をオフにしました"));
        QCOMPARE(fakes.loginItem.status(), LoginItemStatus::NotRegistered);
        QVERIFY(!savedWish(fakes.preferences));
    }

    void settingWhatIsSetDoesNothing()
    {
        StoreOnFakes fakes{TaskList()};
        LogCapture log;
        fakes.store.setLaunchAtLogin(false);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(fakes.loginItem.changeCount(), 0);
        QCOMPARE(fakes.store.loginItemStatus.value(), QString());
    }

    void turningOnWhatIsEnabledAlreadyRegistersNothing()
    {
        StoreOnFakes fakes{TaskList()};
        fakes.loginItem.setStatus(LoginItemStatus::Enabled); // By somebody else, after the store was loaded.
        LogCapture log;
        fakes.store.setLaunchAtLogin(true);
        QCOMPARE(log.take(), (QStringList{u("info login: already enabled"),
                                          u("info store: launchAtLogin=true status=有効")}));
        QCOMPARE(fakes.store.loginItemStatus.value(), u("ログイン時に起動します（有効）"));
        QCOMPARE(fakes.loginItem.changeCount(), 0);
    }

    void whatIsSwitchedOffOrHasLostItsProgramIsRegisteredAnew_data()
    {
        QTest::addColumn<LoginItemStatus>("before");
        QTest::newRow("requires approval") << LoginItemStatus::RequiresApproval;
        QTest::newRow("not found") << LoginItemStatus::NotFound;
    }

    void whatIsSwitchedOffOrHasLostItsProgramIsRegisteredAnew()
    {
        QFETCH(LoginItemStatus, before);
        StoreOnFakes fakes{TaskList()};
        fakes.loginItem.setStatus(before);
        fakes.store.setLaunchAtLogin(true);
        QCOMPARE(fakes.loginItem.status(), LoginItemStatus::Enabled);
    }

    void whenTheSystemRefusesTheSwitchSnapsBackWithTheReason_data()
    {
        QTest::addColumn<bool>("wasOn");
        QTest::newRow("turned on") << false;
        QTest::newRow("turned off") << true;
    }

    void whenTheSystemRefusesTheSwitchSnapsBackWithTheReason()
    {
        QFETCH(bool, wasOn);
        StoreOnFakes fakes{TaskList()};
        fakes.store.setLaunchAtLogin(wasOn);
        fakes.loginItem.refuse(u("Cannot write"));
        int announcements = 0;
        const Subscription subscription =
            fakes.store.launchAtLogin.onChange([&announcements](bool) { ++announcements; });
        LogCapture log;
        fakes.store.setLaunchAtLogin(!wasOn);
        QCOMPARE(log.take(), QStringList{u("warning login: login item failed: Cannot write")});
        QCOMPARE(fakes.store.launchAtLogin.value(), wasOn);
        QCOMPARE(fakes.store.loginItemStatus.value(), u("ログイン起動:Cannot write"));
        QCOMPARE(savedWish(fakes.preferences), wasOn);
        QCOMPARE(announcements, 0);

        fakes.loginItem.refuse({});
        fakes.store.setLaunchAtLogin(!wasOn);
        QCOMPARE(fakes.store.launchAtLogin.value(), !wasOn);
    }

    void applyingMakesTheSystemFollowTheSwitchAndSaves()
    {
        StoreOnFakes fakes{TaskList()};
        fakes.store.setLaunchAtLogin(true);
        fakes.loginItem.setStatus(LoginItemStatus::NotRegistered); // By somebody else.
        const int writes = fakes.preferences.writeCount();
        fakes.store.applyLaunchAtLoginPreference();
        QCOMPARE(fakes.loginItem.status(), LoginItemStatus::Enabled);
        QCOMPARE(fakes.preferences.writeCount(), writes + 1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreLoginTest)
#include "focus_store_login_test.moc"
