// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "shell/app_menu.h"
#include "support/test_case.h"
#include "views/menu_probes.h"
#include "views/view_probes.h"

namespace wrenfold {

namespace {

const QString showText = QStringLiteral("Wren Fold を表示");
const QString settingsText = QStringLiteral("設定...");
const QString chatText = QStringLiteral("AIチャット");
const QString hideText = QStringLiteral("Wren Fold を隠す");
const QString undoText = QStringLiteral("取り消す");
const QString redoText = QStringLiteral("やり直す");
const QString quitText = QStringLiteral("Wren Fold を終了");

struct MenuOnWindow
{
    OffscreenSilence silence;
    QStringList calls;
    bool canUndo = true;
    bool canRedo = true;
    AppMenu menu;
    QWidget window;
    TextField *field = new TextField(QStringLiteral("field"), &window);

    MenuOnWindow()
        : MenuOnWindow(allActions())
    {
    }
    explicit MenuOnWindow(const MenuActions &actions)
        : menu(actions)
    {
        menu.addTo(window);
    }

    MenuActions allActions()
    {
        const auto note = [this](const char *call) {
            return [this, call] { calls.append(QString::fromLatin1(call)); };
        };
        return {.onShowPanel = note("show"),
                .onShowSettings = note("settings"),
                .onShowAIChat = note("chat"),
                .onHidePanel = note("hide"),
                .onUndo = note("undo"),
                .onRedo = note("redo"),
                .canUndo = [this] { return canUndo; },
                .canRedo = [this] { return canRedo; },
                .onQuit = note("quit")};
    }

    [[nodiscard]] bool show()
    {
        window.setFocusPolicy(Qt::ClickFocus);
        window.show();
        const bool isActive = QTest::qWaitForWindowActive(&window);
        window.setFocus();
        return isActive;
    }

    /// The menu, opened; closed again with this object.
    [[nodiscard]] QMenu *open()
    {
        menu.popup(QPoint(10, 10));
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
};

QMenu *editMenuOf(const QMenu &menu)
{
    return menuEntry(menu, QStringLiteral("編集"))->menu<QMenu *>();
}

} // namespace

class AppMenuTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theMenuHoldsBothMenusOfTheProgram()
    {
        MenuOnWindow shown;
        QMenu *menu = shown.open();
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu),
                 QStringList({showText, hideText, settingsText, chatText, QStringLiteral("編集"), undoText,
                              redoText, QStringLiteral("-"), quitText}));
        menu->close();
    }

    void theMenuBearsTheProgramsName()
    {
        MenuOnWindow shown;
        QMenu *menu = shown.open();
        QVERIFY(menu);
        QCOMPARE(menu->title(), QStringLiteral("Wren Fold"));
        QCOMPARE(accessibleName(*menu), QStringLiteral("Wren Fold"));
        menu->close();
    }

    void theShortcutsAreTheOnesWrittenInTheMenu()
    {
        MenuOnWindow shown;
        QMenu *menu = shown.open();
        QVERIFY(menu);
        constexpr auto globalKeys = Qt::CTRL | Qt::ALT | Qt::META;
        QCOMPARE(menuEntry(*menu, showText)->shortcut(), QKeySequence(globalKeys | Qt::Key_P));
        QCOMPARE(menuEntry(*menu, hideText)->shortcut(), QKeySequence(globalKeys | Qt::Key_H));
        QCOMPARE(menuEntry(*menu, settingsText)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
        QVERIFY(menuEntry(*menu, chatText)->shortcut().isEmpty());
        QCOMPARE(menuEntry(*menu, undoText)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Z));
        QCOMPARE(menuEntry(*menu, redoText)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Y));
        QCOMPARE(menuEntry(*menu, quitText)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
        menu->close();
    }

    void everyEntryDoesWhatItSays()
    {
        MenuOnWindow shown;
        QMenu *menu = shown.open();
        QVERIFY(menu);
        for (const QString &text : {showText, hideText, settingsText, chatText, undoText, redoText, quitText})
            menuEntry(*menu, text)->trigger();
        menu->close();
        QCOMPARE(shown.calls.join(QLatin1Char(',')),
                 QStringLiteral("show,hide,settings,chat,undo,redo,quit"));
    }

    void theKeysWorkInTheWindow()
    {
        MenuOnWindow shown;
        QVERIFY(shown.show());
        QTest::keyClick(&shown.window, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&shown.window, Qt::Key_Y, Qt::ControlModifier);
        QTest::keyClick(&shown.window, Qt::Key_Q, Qt::ControlModifier);
        QTest::keyClick(&shown.window, Qt::Key_Comma, Qt::ControlModifier);
        const auto globalKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
        QTest::keyClick(&shown.window, Qt::Key_P, globalKeys);
        QTest::keyClick(&shown.window, Qt::Key_H, globalKeys);
        QCOMPARE(shown.calls.join(QLatin1Char(',')), QStringLiteral("undo,redo,quit,settings,show,hide"));
    }

    void anEntryWithoutItsActionIsDisabledAndItsKeyDoesNothing()
    {
        MenuOnWindow shown{MenuActions{}};
        QVERIFY(shown.show());
        QTest::keyClick(&shown.window, Qt::Key_Comma, Qt::ControlModifier);
        QTest::keyClick(&shown.window, Qt::Key_Z, Qt::ControlModifier);
        QMenu *menu = shown.open();
        QVERIFY(menu);
        for (const QString &text : {showText, hideText, settingsText, chatText, undoText, redoText, quitText})
            QVERIFY(!menuEntry(*menu, text)->isEnabled());
        menu->close();
    }

    void withNobodyToAskUndoAndRedoAreDisabled()
    {
        MenuOnWindow asked;
        MenuActions actions = asked.allActions();
        actions.canUndo = {};
        actions.canRedo = {};
        MenuOnWindow shown{actions};
        QMenu *menu = shown.open();
        QVERIFY(menu);
        QMenu *edit = editMenuOf(*menu);
        edit->popup(QPoint(20, 20));
        QVERIFY(!menuEntry(*edit, undoText)->isEnabled());
        QVERIFY(!menuEntry(*edit, redoText)->isEnabled());
        edit->close();
        menu->close();
    }

    void inAFieldTheKeysAreItsOwnOnlyWhileItHoldsTyping()
    {
        MenuOnWindow shown;
        QVERIFY(shown.show());
        shown.field->setFocus();
        QTest::keyClick(shown.field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(shown.calls, QStringList(QStringLiteral("undo")));
        type(shown.field, QStringLiteral("typed"));
        QTest::keyClick(shown.field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(shown.field->text(), QString());
        QCOMPARE(shown.calls.size(), 1);
        QTest::keyClick(shown.field, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(shown.calls.last(), QStringLiteral("quit"));
    }

    void undoAndRedoAreDisabledWhereThereIsNothing()
    {
        MenuOnWindow shown;
        shown.canRedo = false;
        QMenu *menu = shown.open();
        QVERIFY(menu);
        QMenu *edit = editMenuOf(*menu);
        edit->popup(QPoint(20, 20));
        QVERIFY(menuEntry(*edit, undoText)->isEnabled());
        QVERIFY(!menuEntry(*edit, redoText)->isEnabled());
        edit->close();
        shown.canUndo = false;
        shown.canRedo = true;
        edit->popup(QPoint(20, 20));
        QVERIFY(!menuEntry(*edit, undoText)->isEnabled());
        QVERIFY(menuEntry(*edit, redoText)->isEnabled());
        edit->close();
        menu->close();
    }

    void afterTheMenuTheKeysWorkAgain()
    {
        MenuOnWindow shown;
        shown.canUndo = false;
        QVERIFY(shown.show());
        QMenu *menu = shown.open();
        QVERIFY(menu);
        QMenu *edit = editMenuOf(*menu);
        edit->popup(QPoint(20, 20));
        edit->close();
        menu->close();
        // What cannot be taken back now can be after the next change.
        QTest::keyClick(&shown.window, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(shown.calls, QStringList(QStringLiteral("undo")));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::AppMenuTest)
#include "app_menu_test.moc"
