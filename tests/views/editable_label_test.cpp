// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/editable_label.h"
#include "views/view_probes.h"

#include <QSignalSpy>

namespace wrenfold {

namespace {

/// Notes the keys that reach what lies around the label.
class Surroundings : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

struct LabelInWindow
{
    Surroundings window;
    EditableLabel *label = new EditableLabel(QStringLiteral("名前を変更"), &window);
    QSignalSpy edited{label, &EditableLabel::edited};
    QSignalSpy closedByKey{label, &EditableLabel::closedByKey};

    explicit LabelInWindow(const QString &text)
    {
        label->setText(text);
        label->setGeometry(0, 0, 200, 32);
        window.resize(200, 100);
        window.setFocusPolicy(Qt::StrongFocus);
        window.show();
    }

    [[nodiscard]] bool begin()
    {
        if (!QTest::qWaitForWindowActive(&window))
            return false;
        label->beginEditing();
        return field() && field()->hasFocus();
    }

    [[nodiscard]] TextField *field() const { return shown<TextField>(window).value(0); }
    [[nodiscard]] QStringList editedTexts() const
    {
        QStringList texts;
        for (const QList<QVariant> &arguments : edited)
            texts.append(arguments.value(0).toString());
        return texts;
    }
};

const QString before = QStringLiteral("before");
const QString after = QStringLiteral("after");

} // namespace

class EditableLabelTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aClickAsksToEditAndDoesNotEdit()
    {
        LabelInWindow shownLabel(before);
        QSignalSpy clicked(shownLabel.label, &EditableLabel::clicked);
        shownLabel.label->label()->setClickable(true);
        QTest::mouseClick(shownLabel.label->label(), Qt::LeftButton);
        QCOMPARE(clicked.size(), 1);
        QVERIFY(!shownLabel.label->isEditing());
    }

    void theFieldHoldsTheTextSelected()
    {
        LabelInWindow shownLabel(awkward());
        QVERIFY(shownLabel.begin());
        QCOMPARE(shownLabel.field()->text(), awkward());
        QCOMPARE(shownLabel.field()->selectedText(), awkward());
        QVERIFY(!shownLabel.field()->hasUncommittedText());
        QCOMPARE(accessibleName(*shownLabel.field()), QStringLiteral("名前を変更"));
        QVERIFY(shown<TextLabel>(shownLabel.window).isEmpty());
    }

    void returnCommits_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void returnCommits()
    {
        QFETCH(Qt::Key, key);
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), after);
        QTest::keyClick(shownLabel.field(), key);
        QCOMPARE(shownLabel.editedTexts(), QStringList(after));
        QCOMPARE(shownLabel.closedByKey.size(), 1);
        QVERIFY(!shownLabel.label->isEditing());
        // Until it is told otherwise, the label shows what is kept.
        QCOMPARE(paintedText(*shownLabel.label), before);
    }

    void escapeForgets()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), after);
        QTest::keyClick(shownLabel.field(), Qt::Key_Escape);
        QCOMPARE(shownLabel.editedTexts(), QStringList());
        QCOMPARE(shownLabel.closedByKey.size(), 1);
        QVERIFY(!shownLabel.label->isEditing());
        QVERIFY(shownLabel.begin());
        QCOMPARE(shownLabel.field()->text(), before);
    }

    void leavingTheFieldCommitsOnce()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), after);
        shownLabel.window.setFocus(Qt::MouseFocusReason);
        QCOMPARE(shownLabel.editedTexts(), QStringList(after));
        QCOMPARE(shownLabel.closedByKey.size(), 0);
        QVERIFY(!shownLabel.label->isEditing());
    }

    void anUnchangedTextIsNoEdit()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), before);
        QTest::keyClick(shownLabel.field(), Qt::Key_Return);
        QVERIFY(shownLabel.begin());
        shownLabel.window.setFocus();
        QCOMPARE(shownLabel.editedTexts(), QStringList());
    }

    void blanksAroundTheTextAreNoEdit()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        QTest::keyClick(shownLabel.field(), Qt::Key_End);
        type(shownLabel.field(), QStringLiteral(" \u3000"));
        QTest::keyClick(shownLabel.field(), Qt::Key_Return);
        QCOMPARE(shownLabel.editedTexts(), QStringList());
    }

    void anotherWindowInFrontIsNoEndOfEditing()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), after);
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(shownLabel.field(), &away);
        QVERIFY(shownLabel.label->isEditing());
        QCOMPARE(shownLabel.field()->text(), after);
        QCOMPARE(shownLabel.editedTexts(), QStringList());
    }

    void aTextThatChangesMeanwhileLeavesTheTypingAlone()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), QStringLiteral("typed"));
        shownLabel.label->setText(after);
        QCOMPARE(shownLabel.field()->text(), QStringLiteral("typed"));
        QTest::keyClick(shownLabel.field(), Qt::Key_Escape);
        QCOMPARE(paintedText(*shownLabel.label), after);
    }

    void keysOfTheFieldReachNothingElse()
    {
        LabelInWindow shownLabel(before);
        QVERIFY(shownLabel.begin());
        type(shownLabel.field(), QStringLiteral("x y"));
        for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Insert, Qt::Key_Delete, Qt::Key_Return})
            QTest::keyClick(shownLabel.field() ? static_cast<QWidget *>(shownLabel.field())
                                               : static_cast<QWidget *>(shownLabel.label),
                            key);
        QCOMPARE(shownLabel.window.keys, QList<int>());
        QCOMPARE(shownLabel.editedTexts(), QStringList(QStringLiteral("x y")));
        QVERIFY(shownLabel.begin());
        QTest::keyClick(shownLabel.field(), Qt::Key_Escape);
        QCOMPARE(shownLabel.window.keys, QList<int>());
    }

    void anEmptyTextIsReadAsWhatIsMissing()
    {
        LabelInWindow shownLabel{QString()};
        QCOMPARE(accessibleName(*shownLabel.label->label()), QStringLiteral("名前を変更"));
        shownLabel.label->setText(after);
        QCOMPARE(accessibleName(*shownLabel.label->label()), after);
        shownLabel.label->setText({});
        QCOMPARE(accessibleName(*shownLabel.label->label()), QStringLiteral("名前を変更"));
    }

    void theTabKeyGoesOnFromTheFieldAsFromTheLabel()
    {
        LabelInWindow shownLabel(before);
        shownLabel.label->label()->setClickable(true);
        auto *next = new QWidget(&shownLabel.window);
        next->setFocusPolicy(Qt::TabFocus);
        auto *last = new QWidget(&shownLabel.window);
        last->setFocusPolicy(Qt::TabFocus);
        next->show();
        last->show();
        QVERIFY(shownLabel.begin());
        QTest::keyClick(shownLabel.field(), Qt::Key_Tab);
        QVERIFY(next->hasFocus());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::EditableLabelTest)
#include "editable_label_test.moc"
