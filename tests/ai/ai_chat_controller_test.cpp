// SPDX-License-Identifier: MIT
#include "ai/ai_chat_controller.h"
#include "ai/ai_chat_view.h"
#include "look/text_field.h"
#include "support/fake_panel_window.h"
#include "support/offscreen_silence.h"
#include "support/test_case.h"
#include "views/view_probes.h"

#include <QWindow>

namespace wrenfold {

namespace {

struct Desk
{
    OffscreenSilence silence;
    StoreOnFakes fakes{TaskList{}};
    FakePanelWindow ability;
    AIChatController controller{fakes.store, ability};

    [[nodiscard]] UtilityWindow &panel() { return controller.panel(); }
    [[nodiscard]] AIChatView *view() { return panel().findChild<AIChatView *>(); }
    [[nodiscard]] TextField *field() { return panel().findChild<TextField *>(); }
};

} // namespace

/// The chat's window.
class AIChatControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowIsMadeAtOnceAndHiddenUntilItIsShown()
    {
        Desk desk;
        QVERIFY(!desk.panel().isVisible());
        QCOMPARE(desk.panel().windowTitle(), QStringLiteral("Wrenfold AI"));
        QCOMPARE(desk.panel().size(), QSize(440, 520));
    }

    void itFloatsOnEveryWorkspaceEachTimeItIsShown()
    {
        Desk desk;
        for (int i = 0; i < 2; ++i) {
            desk.controller.show();
            const FakePanelWindow::Companion expected{desk.panel().windowHandle(), CompanionKind::Floating};
            QCOMPARE(desk.ability.takeCompanions(), QList{expected});
            desk.panel().hide();
        }
    }

    void theComposerHasTheFocusEachTimeItIsShown()
    {
        Desk desk;
        desk.controller.show();
        QVERIFY(QTest::qWaitForWindowActive(&desk.panel()));
        QVERIFY(desk.field()->hasFocus());
        QTest::keyClick(desk.field(), Qt::Key_Tab);
        QVERIFY(!desk.field()->hasFocus());
        desk.controller.show();
        QVERIFY(desk.field()->hasFocus());
    }

    void closingAndReopeningTheWindowKeepsTheTranscriptAndTheDraft()
    {
        Desk desk;
        desk.controller.show();
        QVERIFY(click(desk.panel(), QStringLiteral("NOW分割")));
        type(desk.field(), QStringLiteral("half a thou"));
        const AIChatView *view = desk.view();
        const QList<AIChatMessage> messages = view->state().messages;
        QCOMPARE(messages.size(), 2);
        desk.panel().close();
        QVERIFY(!desk.panel().isVisible());
        desk.controller.show();
        QCOMPARE(desk.view(), view);
        QCOMPARE(view->state().messages, messages);
        QCOMPARE(desk.field()->text(), QStringLiteral("half a thou"));
    }

    void escapeHidesTheWindow()
    {
        Desk desk;
        desk.controller.show();
        QTest::keyClick(desk.field(), Qt::Key_Escape);
        QVERIFY(!desk.panel().isVisible());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::AIChatControllerTest)
#include "ai_chat_controller_test.moc"
