// SPDX-License-Identifier: MIT
#include "shell/menu_key.h"
#include "support/offscreen_silence.h"
#include "support/test_case.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace wrenfold {

namespace {

class Field : public QLineEdit
{
public:
    int menus = 0;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override
    {
        QCOMPARE(event->reason(), QContextMenuEvent::Keyboard);
        QVERIFY(rect().contains(event->pos()));
        ++menus;
    }
};

} // namespace

class MenuKeyTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void shiftAndF10OpenTheMenuOfWhatHasTheKeyboard()
    {
        const OffscreenSilence silence;
        const MenuKey menuKey;
        QWidget window;
        Field first;
        Field second;
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(&first);
        layout->addWidget(&second);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        second.setFocus();

        QTest::keyClick(window.windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
        QCOMPARE(second.menus, 1);
        QCOMPARE(first.menus, 0);
        for (const Qt::KeyboardModifiers others :
             {Qt::KeyboardModifiers(Qt::NoModifier), Qt::ShiftModifier | Qt::ControlModifier})
            QTest::keyClick(window.windowHandle(), Qt::Key_F10, others);
        QCOMPARE(second.menus, 1);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::MenuKeyTest)
#include "menu_key_test.moc"
