// SPDX-License-Identifier: MIT
#include "look/icon_button.h"
#include "look/text_field.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/editable_label.h"
#include "views/now_card.h"
#include "views/view_probes.h"

#include <QSignalSpy>

namespace wrenfold {

namespace {

const QString doneHelp = QStringLiteral("完了");
const QString subtaskHelp = QStringLiteral("サブタスクを追加");
const QString deleteHelp = QStringLiteral("削除（元に戻せます）");
const QString offer = QStringLiteral("＋ タスクを追加してここにピン留め");

struct CardInWindow
{
    QWidget window;
    QStringList calls;
    NowCard *card;

    CardInWindow()
    {
        const auto note = [this](const char *what) {
            return [this, what](const TaskItem &task) {
                calls.append(QLatin1String(what) + QLatin1Char(' ') + task.title);
            };
        };
        card = new NowCard({note("done"), note("subtask"), note("delete"),
                            [this](const QString &goal) { calls.append(QStringLiteral("goal ") + goal); },
                            [this] { calls.append(QStringLiteral("input")); }},
                           &window);
        window.setFocusPolicy(Qt::StrongFocus);
        window.resize(320, 200);
        window.show();
        card->resize(320, card->heightForWidth(320));
        window.setFocus();
    }

    void setTask(const QString &title)
    {
        card->setTask(madeTask(title));
        card->resize(320, card->heightForWidth(320));
    }

    [[nodiscard]] TextField *field() const { return shown<TextField>(window).value(0); }
    /// Opens the goal for editing by a click on what it is read out as.
    [[nodiscard]] bool editGoal(const QString &name)
    {
        if (!QTest::qWaitForWindowActive(&window))
            return false;
        // The word in front of the goal may read the same.
        QTest::mouseClick(shown<TextLabel>(*card->findChild<EditableLabel *>()).value(0), Qt::LeftButton);
        return field() && field()->hasFocus() && field()->text() == name;
    }
};

} // namespace

class NowCardTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouse()
    {
        CardInWindow shownCard;
        shownCard.setTask(QStringLiteral("a"));
        QVERIFY(click(*shownCard.card, doneHelp));
        QVERIFY(click(*shownCard.card, subtaskHelp));
        QVERIFY(click(*shownCard.card, deleteHelp));
        QCOMPARE(shownCard.calls.join(QLatin1Char(',')), QStringLiteral("done a,subtask a,delete a"));
    }

    void everyControlIsReachedByKey()
    {
        CardInWindow shownCard;
        shownCard.setTask(QStringLiteral("a"));
        QVERIFY(QTest::qWaitForWindowActive(&shownCard.window));
        shownCard.window.setFocus();
        for (int i = 0; i < 4; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            if (i > 0)
                QTest::keyClick(QApplication::focusWidget(), i == 2 ? Qt::Key_Return : Qt::Key_Space);
        }
        QCOMPARE(shownCard.calls.join(QLatin1Char(',')), QStringLiteral("subtask a,delete a,done a"));
    }

    void theDoneButtonIsACircleWithATick()
    {
        CardInWindow shownCard;
        shownCard.setTask(QStringLiteral("a"));
        const auto symbolOf = [&shownCard](const QString &name) {
            return qobject_cast<IconButton *>(buttonNamed(*shownCard.card, name))->symbol();
        };
        QCOMPARE(symbolOf(doneHelp), QStringLiteral("checkmark.circle"));
        QCOMPARE(symbolOf(deleteHelp), QStringLiteral("trash"));
    }

    void withoutATaskTheCardOffersToAddOne()
    {
        CardInWindow shownCard;
        QCOMPARE(shown<PaintedButton>(*shownCard.card).size(), 1);
        PaintedButton *button = buttonNamed(*shownCard.card, offer);
        QVERIFY(button);
        QCOMPARE(shownToolTip(*button), plainToolTip(QStringLiteral("入力欄にフォーカスします")));
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClick(button, Qt::Key_Return);
        QCOMPARE(shownCard.calls.join(QLatin1Char(',')), QStringLiteral("input,input"));

        shownCard.setTask(QStringLiteral("a"));
        QVERIFY(!buttonNamed(*shownCard.card, offer));
        shownCard.card->setTask(std::nullopt);
        QVERIFY(buttonNamed(*shownCard.card, offer));
        QVERIFY(!labelSaying(*shownCard.card, QStringLiteral("a")));
    }

    void aButtonActsOnTheTaskShownWhenItIsPressed()
    {
        CardInWindow shownCard;
        shownCard.setTask(QStringLiteral("a"));
        shownCard.setTask(QStringLiteral("b"));
        QVERIFY(click(*shownCard.card, doneHelp));
        QCOMPARE(shownCard.calls, QStringList(QStringLiteral("done b")));
    }

    void titleAndGoalAreShownAndReadExactly()
    {
        CardInWindow shownCard;
        shownCard.setTask(awkward());
        shownCard.card->setGoal(QStringLiteral("<i>B</i> & 目標🎯"));
        QVERIFY(labelSaying(*shownCard.card, awkward()));
        QVERIFY(labelSaying(*shownCard.card, QStringLiteral("<i>B</i> & 目標🎯")));
        QCOMPARE(paintedText(*shownCard.card), QStringLiteral("GOAL<i>B</i> & 目標🎯") + awkward());
    }

    void aLongTitleTakesTwoLinesAndThenEndsInAnEllipsis()
    {
        CardInWindow shownCard;
        QSignalSpy heightChanged(shownCard.card, &NowCard::heightChanged);
        shownCard.setTask(QStringLiteral("a"));
        const int low = shownCard.card->heightForWidth(320);
        const QString title =
            QStringLiteral("四半期の予算案を確認する👨‍👩‍👧‍👦").repeated(30);
        heightChanged.clear();
        shownCard.setTask(title);
        QCOMPARE(heightChanged.size(), 1);
        QVERIFY(shownCard.card->heightForWidth(320) > low);
        TextLabel *label = labelSaying(*shownCard.card, title);
        QVERIFY(label && label->isElided());
        QCOMPARE(shownToolTip(*label), plainToolTip(title));
        QVERIFY(paintedText(*shownCard.card).contains(QChar(0x2026)));
        heightChanged.clear();
        shownCard.setTask(QStringLiteral("b"));
        QCOMPARE(heightChanged.size(), 1);
        QCOMPARE(shownCard.card->heightForWidth(320), low);
    }

    void aClickEditsTheGoalAndReturnKeepsIt()
    {
        CardInWindow shownCard;
        shownCard.card->setGoal(QStringLiteral("old"));
        QVERIFY(shownCard.editGoal(QStringLiteral("old")));
        type(shownCard.field(), awkward());
        QTest::keyClick(shownCard.field(), Qt::Key_Return);
        QCOMPARE(shownCard.calls, QStringList(QStringLiteral("goal ") + awkward()));
        QVERIFY(!shownCard.field());
        QVERIFY(labelSaying(*shownCard.card, QStringLiteral("old"))->hasFocus());
    }

    void escapeLeavesTheGoalAsItWas()
    {
        CardInWindow shownCard;
        shownCard.card->setGoal(QStringLiteral("old"));
        QVERIFY(shownCard.editGoal(QStringLiteral("old")));
        type(shownCard.field(), QStringLiteral("new"));
        QTest::keyClick(shownCard.field(), Qt::Key_Escape);
        QCOMPARE(shownCard.calls, QStringList());
        QVERIFY(labelSaying(*shownCard.card, QStringLiteral("old"))->hasFocus());
    }

    void theGoalIsEditedByTabAndEnter()
    {
        CardInWindow shownCard;
        QVERIFY(QTest::qWaitForWindowActive(&shownCard.window));
        shownCard.window.setFocus();
        QTest::keyClick(&shownCard.window, Qt::Key_Tab);
        QCOMPARE(accessibleName(*QApplication::focusWidget()), QStringLiteral("GOAL"));
        QCOMPARE(roleOf(*QApplication::focusWidget()), QAccessible::Button);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
        QVERIFY(shownCard.field() && shownCard.field()->hasFocus());
        QCOMPARE(accessibleName(*shownCard.field()), QStringLiteral("GOAL"));
    }

    void anEmptyGoalCanBeClickedAndTheGoalEmptied()
    {
        CardInWindow shownCard;
        QVERIFY(shownCard.editGoal(QString()));
        type(shownCard.field(), QStringLiteral("new"));
        QTest::keyClick(shownCard.field(), Qt::Key_Return);
        shownCard.card->setGoal(QStringLiteral("new"));
        QVERIFY(shownCard.editGoal(QStringLiteral("new")));
        QTest::keyClick(shownCard.field(), Qt::Key_Delete);
        QTest::keyClick(shownCard.field(), Qt::Key_Return);
        QCOMPARE(shownCard.calls.join(QLatin1Char(',')), QStringLiteral("goal new,goal "));
    }

    void everyButtonCanBeHitAndIsNamed()
    {
        CardInWindow shownCard;
        QCOMPARE(faultsOfButtons(*shownCard.card), QStringList());
        shownCard.setTask(QStringLiteral("長い題名").repeated(30));
        QCOMPARE(faultsOfButtons(*shownCard.card), QStringList());
        for (const TextLabel *label : shown<TextLabel>(*shownCard.card))
            QVERIFY(!label->isClickable() || (label->height() >= 24 && label->width() >= 24));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::NowCardTest)
#include "now_card_test.moc"
