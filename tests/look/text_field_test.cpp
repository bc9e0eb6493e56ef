// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "look/theme.h"
#include "support/painted_text.h"
#include "support/test_case.h"

#include <QAccessible>
#include <QApplication>
#include <QShortcut>
#include <QSignalSpy>
#include <QStyleHints>

namespace wrenfold {

namespace {

const QString awkward = QStringLiteral("A & B_c <b>x</b>");

/// A window with the shortcuts that the list has, and one field with the focus.
struct Window : QWidget
{
    Window()
    {
        field.resize(180, 30);
        resize(200, 100);
        QObject::connect(&undoShortcut, &QShortcut::activated, this, [this] { ++undone; });
        QObject::connect(&redoShortcut, &QShortcut::activated, this, [this] { ++redone; });
    }

    void showActive()
    {
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        field.setFocus();
        QVERIFY(field.hasFocus());
    }

    TextField field{QStringLiteral("TODOを追加"), this};
    QShortcut undoShortcut{QKeySequence(Qt::CTRL | Qt::Key_Z), this};
    QShortcut redoShortcut{QKeySequence(Qt::CTRL | Qt::Key_Y), this};
    int undone = 0;
    int redone = 0;
};

int flashTime()
{
    return QGuiApplication::styleHints()->cursorFlashTime();
}

} // namespace

class TextFieldTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void textAndPlaceholderAreShownAndReadExactly()
    {
        TextField field(awkward);
        field.resize(300, 30);
        QCOMPARE(paintedText(field), awkward);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&field);
        QCOMPARE(accessible->role(), QAccessible::EditableText);
        QCOMPARE(accessible->text(QAccessible::Name), awkward);
        field.setText(QStringLiteral("&x <i>y</i>"));
        QCOMPARE(paintedText(field), QStringLiteral("&x <i>y</i>"));
        QCOMPARE(accessible->text(QAccessible::Value), QStringLiteral("&x <i>y</i>"));
    }

    void typingIsUncommittedUntilItIsCommitted()
    {
        TextField field(awkward);
        QVERIFY(!field.hasUncommittedText());
        QTest::keyClicks(&field, QStringLiteral("ab"));
        QVERIFY(field.hasUncommittedText());
        field.setCursorPosition(1);
        field.commit();
        QVERIFY(!field.hasUncommittedText());
        QCOMPARE(field.text(), QStringLiteral("ab"));
        QCOMPARE(field.cursorPosition(), 1);
        QVERIFY(!field.isUndoAvailable());
        field.setCommittedText(QStringLiteral("title"));
        QCOMPARE(field.text(), QStringLiteral("title"));
        QVERIFY(!field.hasUncommittedText());
    }

    void anInputMethodsCompositionIsUncommitted()
    {
        TextField field(awkward);
        QInputMethodEvent compose(QStringLiteral("にほん"), {});
        QCoreApplication::sendEvent(&field, &compose);
        QVERIFY(field.hasUncommittedText());
        QInputMethodEvent cancel;
        QCoreApplication::sendEvent(&field, &cancel);
        QVERIFY(!field.hasUncommittedText());
    }

    void undoAndRedoOfAnUntouchedFieldGoToTheWindow()
    {
        Window window;
        window.showActive();
        QTest::keyClick(&window.field, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&window.field, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(window.undone, 1);
        QCOMPARE(window.redone, 1);
    }

    void undoAndRedoOfTypingStayInTheField()
    {
        Window window;
        window.showActive();
        window.field.setCommittedText(QStringLiteral("kept "));
        QTest::keyClicks(&window.field, QStringLiteral("one"));
        QTest::keyClick(&window.field, Qt::Key_Backspace);
        QTest::keyClick(&window.field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.field.text(), QStringLiteral("kept one"));
        QTest::keyClick(&window.field, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(window.field.text(), QStringLiteral("kept on"));
        QCOMPARE(window.undone, 0);
        QCOMPARE(window.redone, 0);
    }

    void undoGoesToTheWindowOnceAllTypingIsUndone()
    {
        Window window;
        window.showActive();
        window.field.setCommittedText(QStringLiteral("kept"));
        QTest::keyClicks(&window.field, QStringLiteral("x"));
        QTest::keyClick(&window.field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.field.text(), QStringLiteral("kept"));
        QCOMPARE(window.undone, 0);
        QTest::keyClick(&window.field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.undone, 1);
        QCOMPARE(window.field.text(), QStringLiteral("kept"));
    }

    void otherEditingKeysStayInTheField()
    {
        Window window;
        QShortcut selectAll(QKeySequence(Qt::CTRL | Qt::Key_A), &window);
        QSignalSpy selected(&selectAll, &QShortcut::activated);
        window.showActive();
        window.field.setCommittedText(QStringLiteral("kept"));
        QTest::keyClick(&window.field, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(window.field.selectedText(), QStringLiteral("kept"));
        QCOMPARE(selected.size(), 0);
    }

    void theCaretRestsWhenLeftAloneAndWakesOnTyping()
    {
        const int usual = flashTime();
        QVERIFY(usual > 0);
        Window window;
        window.field.setCaretRest(std::chrono::milliseconds(50));
        window.showActive();
        QCOMPARE(flashTime(), usual);
        QTRY_COMPARE(flashTime(), 0);
        QTest::keyClick(&window.field, Qt::Key_A);
        QCOMPARE(flashTime(), usual);
        QTRY_COMPARE(flashTime(), 0);
        window.field.clearFocus();
        QCOMPARE(flashTime(), usual);
    }

    void aRestingCaretDoesNotRepaint()
    {
        Window window;
        window.field.setCaretRest(std::chrono::milliseconds(50));
        window.showActive();
        QTRY_COMPARE(flashTime(), 0);
        struct TimerCounter : QObject
        {
            int timers = 0;
            bool eventFilter(QObject *, QEvent *event) override
            {
                timers += event->type() == QEvent::Timer ? 1 : 0;
                return false;
            }
        } counter;
        qApp->installEventFilter(&counter);
        // Two usual blinks.
        QVERIFY(!QTest::qWaitFor([&counter] { return counter.timers > 0; }, 2000));
    }

    void theCaretsRestEndsWithTheField()
    {
        const int usual = flashTime();
        {
            Window window;
            window.field.setCaretRest(std::chrono::milliseconds(50));
            window.showActive();
            QTRY_COMPARE(flashTime(), 0);
        }
        QCOMPARE(flashTime(), usual);
    }

    void theColoursFollowTheDesktopsThemeLive()
    {
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::white);
        QApplication::setPalette(palette);
        Window window;
        window.showActive();
        TextField hidden(awkward);
        QCOMPARE(window.field.palette().color(QPalette::Text), Theme::light().ink);
        palette.setColor(QPalette::Window, Qt::black);
        QApplication::setPalette(palette);
        QTRY_COMPARE(window.field.palette().color(QPalette::Text), Theme::dark().ink);
        QCOMPARE(window.field.palette().color(QPalette::PlaceholderText), Theme::dark().tertiaryInk);
        hidden.ensurePolished();
        QCOMPARE(hidden.palette().color(QPalette::Text), Theme::dark().ink);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::TextFieldTest)
#include "text_field_test.moc"
