// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "support/test_case.h"
#include "views/todo_composer.h"
#include "views/view_probes.h"

#include <QSignalSpy>

namespace wrenfold {

namespace {

struct ComposerInWindow
{
    QWidget window;
    TodoComposer *composer = new TodoComposer(&window);
    QSignalSpy submitted{composer, &TodoComposer::submitted};

    ComposerInWindow()
    {
        window.setFocusPolicy(Qt::StrongFocus);
        window.resize(320, 100);
        composer->resize(320, composer->height());
        window.show();
        window.setFocus();
    }

    [[nodiscard]] TextField *field() const { return shown<TextField>(window).value(0); }
    [[nodiscard]] QString draft() const { return submitted.value(0).value(0).toString(); }
    [[nodiscard]] bool makeActive() const { return submitted.value(0).value(1).toBool(); }
};

} // namespace

class TodoComposerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void returnSubmitsExactlyWhatWasTyped_data()
    {
        QTest::addColumn<QString>("draft");
        QTest::newRow("markup and mnemonics") << awkward();
        QTest::newRow("Japanese and emoji") << QStringLiteral("買い物🛒をする");
        QTest::newRow("long") << QStringLiteral("とても長い題名").repeated(200);
    }

    void returnSubmitsExactlyWhatWasTyped()
    {
        QFETCH(QString, draft);
        ComposerInWindow shownComposer;
        type(shownComposer.field(), draft);
        QTest::keyClick(shownComposer.field(), Qt::Key_Return);
        QCOMPARE(shownComposer.submitted.size(), 1);
        QCOMPARE(shownComposer.draft(), draft);
        QVERIFY(!shownComposer.makeActive());
        QCOMPARE(shownComposer.field()->text(), QString());
        QVERIFY(!shownComposer.field()->hasUncommittedText());
    }

    void controlReturnSubmitsAsNow_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void controlReturnSubmitsAsNow()
    {
        QFETCH(Qt::Key, key);
        ComposerInWindow shownComposer;
        type(shownComposer.field(), QStringLiteral("a"));
        QTest::keyClick(shownComposer.field(), key, Qt::ControlModifier);
        QCOMPARE(shownComposer.submitted.size(), 1);
        QVERIFY(shownComposer.makeActive());
        QCOMPARE(shownComposer.draft(), QStringLiteral("a"));
    }

    void theNumberPadsEnterSubmits()
    {
        ComposerInWindow shownComposer;
        type(shownComposer.field(), QStringLiteral("a"));
        QTest::keyClick(shownComposer.field(), Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(shownComposer.submitted.size(), 1);
        QVERIFY(!shownComposer.makeActive());
    }

    void theFieldHasNoCaretUntilItIsGivenOne()
    {
        ComposerInWindow shownComposer;
        QVERIFY(QTest::qWaitForWindowActive(&shownComposer.window));
        QVERIFY(!shownComposer.field()->hasFocus());
        shownComposer.composer->focusInput();
        QVERIFY(shownComposer.field()->hasFocus());
    }

    void aClickBesideTheFieldGoesIntoIt()
    {
        ComposerInWindow shownComposer;
        QVERIFY(QTest::qWaitForWindowActive(&shownComposer.window));
        QTest::mouseClick(shownComposer.composer, Qt::LeftButton, {}, QPoint(4, 4));
        QVERIFY(shownComposer.field()->hasFocus());
    }

    void theFieldSaysWhatItIsFor()
    {
        ComposerInWindow shownComposer;
        QCOMPARE(shownComposer.field()->placeholderText(), QStringLiteral("TODOを追加"));
        QCOMPARE(accessibleName(*shownComposer.field()), QStringLiteral("TODOを追加"));
        QCOMPARE(roleOf(*shownComposer.field()), QAccessible::EditableText);
        QVERIFY(shownComposer.field()->height() >= 24);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::TodoComposerTest)
#include "todo_composer_test.moc"
