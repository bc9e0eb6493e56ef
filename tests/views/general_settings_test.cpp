// SPDX-License-Identifier: MIT
#include "look/selectable_note.h"
#include "support/test_case.h"
#include "views/settings_in_window.h"

#include <QClipboard>
#include <QRegularExpression>
#include <QScrollBar>

namespace wrenfold {

class GeneralSettingsTest : public TestCase
{
    Q_OBJECT

    static QString login() { return QStringLiteral("ログイン時に起動"); }

private Q_SLOTS:
    void launchingAtLoginIsRegisteredAndUnregisteredAtOnce()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QCheckBox *box = settings.box(login());
        settings.click(box);
        QCOMPARE(settings.fakes.loginItem.status(), LoginItemStatus::Enabled);
        QVERIFY(settings.store.launchAtLogin.value());
        QVERIFY(settings.fakes.saved().launchAtLogin);
        QVERIFY(settings.texts().contains(settings.store.loginItemStatus.value()));
        settings.click(box);
        QCOMPARE(settings.fakes.loginItem.status(), LoginItemStatus::NotRegistered);
        QVERIFY(!settings.fakes.saved().launchAtLogin);
        settings.fakes.loginItem.setStatus(LoginItemStatus::Enabled);
        settings.store.refreshLoginItemStatus();
        QVERIFY(box->isChecked());
    }

    void aRefusedSwitchGoesBackAndTheReasonIsShownExactly()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        settings.fakes.loginItem.refuse(awkward() + QStringLiteral("\n\u202Eend"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("end")));
        settings.click(settings.box(login()));
        QVERIFY(!settings.box(login())->isChecked());
        QVERIFY(!settings.store.launchAtLogin.value());
        const auto *status = settings.control<QLabel>(QStringLiteral("ログイン起動:") + awkward() +
                                                      QStringLiteral(" \u202Eend"));
        QVERIFY(status);
        QCOMPARE(status->textFormat(), Qt::PlainText);
        QCOMPARE(settings.fakes.loginItem.changeCount(), 1);
    }

    void anEmptyLoginStatusLeavesNoEmptyLine()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QCOMPARE(settings.store.loginItemStatus.value(), QString());
        const QWidget *note = settings.control<QLabel>(settings.texts().value(2));
        QCheckBox *box = settings.box(login());
        const auto gap = [&] { return note->geometry().top() - box->geometry().bottom() - 1; };
        QTRY_VERIFY(gap() > 0);
        const int empty = gap();
        settings.store.refreshLoginItemStatus();
        QCOMPARE(settings.texts().value(2), QStringLiteral("状態: 未登録"));
        QTRY_VERIFY(gap() > empty + box->fontMetrics().height());
        QVERIFY(empty < box->fontMetrics().height());
    }

    void theSteppersStopAtTheirBounds_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("maximum");
        QTest::newRow("work") << QStringLiteral("作業") << 90;
        QTest::newRow("break") << QStringLiteral("休憩") << 30;
    }

    void theSteppersStopAtTheirBounds()
    {
        QFETCH(QString, name);
        QFETCH(int, maximum);
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QSpinBox *box = settings.minutes(name);
        box->setFocus();
        QVERIFY(box->hasFocus());
        for (const bool byWheel : {false, true}) {
            const auto turn = [&](int direction) {
                if (byWheel)
                    SettingsInWindow::turnWheel(box, direction);
                else
                    QTest::keyClick(box, direction > 0 ? Qt::Key_Up : Qt::Key_Down);
            };
            const int before = box->value();
            turn(+1);
            QCOMPARE(minutes(settings, name), std::pair(before + 1, before + 1));
            for (int step = 0; step < maximum; ++step)
                turn(+1);
            QCOMPARE(minutes(settings, name), std::pair(maximum, maximum));
            QCOMPARE(box->text(), QStringLiteral("%1: %2 分").arg(name).arg(maximum));
            for (int step = 0; step < maximum + 2; ++step)
                turn(-1);
            QCOMPARE(minutes(settings, name), std::pair(1, 1));
        }
    }

    void typingBeyondTheBoundsIsNotTaken()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QSpinBox *box = settings.minutes(QStringLiteral("作業"));
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("91"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(minutes(settings, QStringLiteral("作業")), std::pair(9, 9));
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("90"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(minutes(settings, QStringLiteral("作業")), std::pair(90, 90));
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("0"));
        settings.box(login())->setFocus();
        QVERIFY(!box->hasFocus());
        QCOMPARE(minutes(settings, QStringLiteral("作業")).first, box->value());
        QVERIFY(box->value() >= 1);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("-5a"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(minutes(settings, QStringLiteral("作業")), std::pair(5, 5));
    }

    void aNumberIsTakenWhenItIsWhole()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QSpinBox *box = settings.minutes(QStringLiteral("作業"));
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("30"));
        QCOMPARE(settings.store.workDurationMinutes.value(), 25);
        QCOMPARE(settings.store.remainingSeconds.value(), 25 * 60);
        settings.box(login())->setFocus();
        QCOMPARE(settings.store.workDurationMinutes.value(), 30);
        QCOMPARE(settings.store.remainingSeconds.value(), 25 * 60);
    }

    void theSteppersFollowTheStore()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        settings.store.setWorkDurationMinutes(50);
        settings.store.setBreakDurationMinutes(10);
        QCOMPARE(settings.minutes(QStringLiteral("作業"))->value(), 50);
        QCOMPARE(settings.minutes(QStringLiteral("休憩"))->value(), 10);
    }

    void theSteppersAreReadOutByNameAndValue()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QSpinBox *box = settings.minutes(QStringLiteral("作業"));
        QVERIFY(box);
        QCOMPARE(roleOf(*box), QAccessible::SpinBox);
        QVERIFY(QAccessible::queryAccessibleInterface(box)
                    ->text(QAccessible::Value)
                    .contains(QStringLiteral("25")));
    }

    void theWheelOverAStepperWithoutFocusScrollsThePage()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        settings.box(login())->setFocus();
        const QScrollBar *bar = settings.page()->verticalScrollBar();
        QSpinBox *box = settings.minutes(QStringLiteral("作業"));
        SettingsInWindow::turnWheel(box->findChild<QLineEdit *>());
        QVERIFY(bar->value() > 0);
        const int scrolled = bar->value();
        SettingsInWindow::turnWheel(box);
        QVERIFY(bar->value() > scrolled);
        QCOMPARE(box->value(), 25);
        QVERIFY(!box->hasFocus());
    }

    void undoInAStepperIsTheFieldsOnlyWhileThereIsTyping()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QSpinBox *box = settings.minutes(QStringLiteral("作業"));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Up);
        QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(settings.undone, 1);
        QCOMPARE(box->value(), 26);
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("7"));
        while (box->text() != QStringLiteral("作業: 26 分") && settings.undone == 1)
            QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(settings.undone, 1);
        QCOMPARE(settings.store.workDurationMinutes.value(), 26);
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("8"));
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(settings.undone, 2);
        QCOMPARE(settings.redone, 1);
        QCOMPARE(settings.store.workDurationMinutes.value(), 8);
    }

    void theSteppersMenuSpeaksJapanese()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QMenu *menu = openMenu(*settings.minutes(QStringLiteral("作業")));
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu).value(0), QStringLiteral("元に戻す"));
        QVERIFY(!menu->actions().constFirst()->isEnabled());
        menu->close();
    }

    void theButtonsSetTheTimer()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        settings.click(settings.button(QStringLiteral("休憩をセット")));
        QCOMPARE(settings.store.timerPhase.value(), PomodoroPhase::shortBreak);
        QCOMPARE(settings.store.remainingSeconds.value(), 300);
        settings.click(settings.button(QStringLiteral("作業へリセット")));
        QCOMPARE(settings.store.timerPhase.value(), PomodoroPhase::work);
        QCOMPARE(settings.store.remainingSeconds.value(), 1500);
    }

    void theStatisticsFollowTheTasksAndTheDay()
    {
        SettingsInWindow settings({madeTask(QStringLiteral("a")), madeTask(QStringLiteral("b"))});
        QVERIFY(settings.show());
        QCOMPARE(statistics(settings), QStringList({QStringLiteral("2 件"), QStringLiteral("0 件")}));
        settings.store.toggleDone(settings.fakes.task(QStringLiteral("a")));
        QCOMPARE(statistics(settings), QStringList({QStringLiteral("1 件"), QStringLiteral("1 件")}));
        settings.fakes.clock.advance(std::chrono::hours(24));
        QCOMPARE(statistics(settings), QStringList({QStringLiteral("1 件"), QStringLiteral("0 件")}));
    }

    void onlyTheDebuggingTextsCanBeSelectedByMouseAndKeyboard()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show());
        QStringList selectable;
        for (QLabel *label : shown<QLabel>(*settings.page())) {
            if (label->textInteractionFlags() & Qt::TextSelectableByMouse)
                selectable.append(label->text());
        }
        QCOMPARE(selectable, settings.texts().last(3));

        auto *label = settings.control<SelectableNote>(QStringLiteral("subsystem: dev.tolvane.Wrenfold"));
        settings.page()->ensureWidgetVisible(label);
        QTest::mouseDClick(label, Qt::LeftButton, {}, QPoint(8, label->height() / 2));
        QCOMPARE(label->selectedText(), QStringLiteral("subsystem"));
        label->setSelection(0, 0);
        label->setFocus();
        QTest::keyClick(label, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(label, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("subsystem: dev.tolvane.Wrenfold"));
    }

private:
    /// What the stepper and what the saved document say.
    static std::pair<int, int> minutes(const SettingsInWindow &settings, const QString &name)
    {
        const SavedState saved = settings.fakes.saved();
        return {settings.minutes(name)->value(),
                static_cast<int>(name == QStringLiteral("作業") ? saved.workDurationMinutes
                                                                : saved.breakDurationMinutes)};
    }

    static QStringList statistics(const SettingsInWindow &settings)
    {
        return settings.texts().filter(QStringLiteral(" 件"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::GeneralSettingsTest)
#include "general_settings_test.moc"
