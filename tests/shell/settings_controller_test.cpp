// SPDX-License-Identifier: MIT
#include "platform/installed_applications.h"
#include "shell/settings_controller.h"
#include "support/fake_panel_window.h"
#include "support/test_case.h"
#include "views/menu_probes.h"
#include "views/settings_view.h"
#include "views/view_probes.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QWindow>

namespace wrenfold {

namespace {

struct ControllerOnFakes
{
    OffscreenSilence silence;
    StoreOnFakes fakes{TaskList{}};
    FakePanelWindow ability;
    InstalledApplications applications;
    QWidgetList made; ///< The windows, as they were announced.
    bool wasInSightWhenMade = false;
    SettingsController controller{fakes.store, fakes.clock, ability, applications, {[this](QWidget &window) {
                                      made.append(&window);
                                      wasInSightWhenMade = window.isVisible();
                                  }}};

    [[nodiscard]] UtilityWindow &window() const { return *controller.window(); }
};

} // namespace

class SettingsControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowIsMadeWhenItIsFirstShown()
    {
        ControllerOnFakes fakes;
        QCOMPARE(fakes.controller.window(), nullptr);
        fakes.controller.show();
        QCOMPARE(fakes.window().windowTitle(), QStringLiteral("Wrenfold Settings"));
        QCOMPARE(fakes.window().size(), QSize(520, 430));
        QVERIFY(fakes.window().isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&fakes.window()));
        QVERIFY(qobject_cast<SettingsView *>(fakes.window().content()));
        QCOMPARE(fakes.window().content()->size(), fakes.window().size());
        QCOMPARE(fakes.made, QWidgetList({&fakes.window()}));
        QVERIFY(!fakes.wasInSightWhenMade);
    }

    void closingAndReopeningBringsBackTheSameWindowAtTheSamePosition_data()
    {
        QTest::addColumn<bool>("byEscape");
        QTest::newRow("closed") << false;
        QTest::newRow("by Escape") << true;
    }

    void closingAndReopeningBringsBackTheSameWindowAtTheSamePosition()
    {
        QFETCH(bool, byEscape);
        ControllerOnFakes fakes;
        fakes.controller.show();
        QVERIFY(QTest::qWaitForWindowActive(&fakes.window()));
        const UtilityWindow *window = &fakes.window();
        fakes.window().move(150, 120);
        fakes.window().resize(600, 500);
        const QRect place = window->geometry();
        auto *tabs = window->findChild<QTabWidget *>();
        tabs->setCurrentIndex(2);
        if (byEscape)
            QTest::keyClick(tabs, Qt::Key_Escape);
        else
            fakes.window().close();
        QVERIFY(!window->isVisible());
        fakes.controller.show();
        QCOMPARE(fakes.controller.window(), window);
        QVERIFY(window->isVisible());
        QCOMPARE(window->geometry(), place);
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(fakes.made.size(), 1);
    }

    void aShownWindowComesToTheFrontAgain()
    {
        ControllerOnFakes fakes;
        fakes.controller.show();
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        fakes.controller.show();
        QVERIFY(QTest::qWaitForWindowActive(&fakes.window()));
    }

    void theDesktopIsToldEachTimeBeforeTheWindowIsShown()
    {
        ControllerOnFakes fakes;
        for (int time = 0; time < 2; ++time) {
            fakes.controller.show();
            const QList<FakePanelWindow::Companion> expected{
                {fakes.window().windowHandle(), CompanionKind::Ordinary}};
            QCOMPARE(fakes.ability.takeCompanions(), expected);
            fakes.window().close();
        }
    }

    void whatChangesWhileItIsClosedIsThereWhenItIsReopened()
    {
        ControllerOnFakes fakes;
        fakes.controller.show();
        fakes.window().findChild<QTabWidget *>()->setCurrentIndex(1);
        fakes.window().close();
        fakes.fakes.store.openRouterModel.set(QStringLiteral("some/model"));
        fakes.controller.show();
        QStringList texts;
        for (const QLineEdit *field : shown<QLineEdit>(fakes.window()))
            texts.append(field->text());
        QVERIFY(texts.contains(QStringLiteral("some/model")));
    }

    void escapeClosesTheWindowFromEveryControl()
    {
        ControllerOnFakes fakes;
        fakes.controller.show();
        auto *tabs = fakes.window().findChild<QTabWidget *>();
        for (int index = 0; index < tabs->count(); ++index) {
            tabs->setCurrentIndex(index);
            for (QWidget *control : shown<QWidget>(*tabs->currentWidget())) {
                if (!(control->focusPolicy() & Qt::TabFocus) || control->focusProxy())
                    continue;
                fakes.controller.show();
                QVERIFY(QTest::qWaitForWindowActive(&fakes.window()));
                control->setFocus();
                QTest::keyClick(control, Qt::Key_Escape);
                QVERIFY2(!fakes.window().isVisible(), control->metaObject()->className());
            }
            fakes.controller.show();
        }
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::SettingsControllerTest)
#include "settings_controller_test.moc"
