// SPDX-License-Identifier: MIT
#include "look/theme.h"
#include "support/contrast.h"
#include "support/test_case.h"
#include "views/settings_in_window.h"

#include <QScrollBar>

namespace wrenfold {

class SettingsViewTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thereAreFourTabsAndTheFirstIsOpen()
    {
        SettingsInWindow settings;
        settings.window.show();
        const QTabWidget *tabs = settings.tabs();
        QStringList labels;
        for (int index = 0; index < tabs->count(); ++index) {
            labels.append(tabs->tabText(index));
            QVERIFY(!tabs->tabIcon(index).isNull());
        }
        QCOMPARE(labels, QStringList({QStringLiteral("一般"), QStringLiteral("連携"),
                                      QStringLiteral("自動化"), QStringLiteral("ガード")}));
        QCOMPARE(tabs->currentIndex(), 0);
    }

    void theGeneralTabSaysAllThis()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::General));
        QCOMPARE(
            settings.texts(),
            QStringList({QStringLiteral("起動"),
                         QStringLiteral("ログイン時に起動"),
                         QStringLiteral("安定動作のため `/Applications/Wrenfold.app` へのインストールを推奨"
                                        "（./script/install.sh）。"),
                         QStringLiteral("ポモドーロ"),
                         QStringLiteral("作業: 25 分"),
                         QStringLiteral("休憩: 5 分"),
                         QStringLiteral("休憩をセット"),
                         QStringLiteral("作業へリセット"),
                         QStringLiteral("作業完了後は自動で休憩タイマーに入ります。"
                                        "休憩中はヘッダーのスキップで作業に戻れます。"),
                         QStringLiteral("メニューバー / 追い込み"),
                         QStringLiteral("メニューバーに残り時間を表示"),
                         QStringLiteral("あと5分・1分のやさしいリマインド"),
                         QStringLiteral("「急げ」ではなく「区切る合図」として、作業中だけ静かに知らせます。"
                                        "うざいときはオフにできます。"),
                         QStringLiteral("統計"),
                         QStringLiteral("未完了（トップ）"),
                         QStringLiteral("0 件"),
                         QStringLiteral("今日の完了"),
                         QStringLiteral("0 件"),
                         QStringLiteral("デバッグ"),
                         QStringLiteral("ログ確認: ./script/build_and_run.sh --logs"),
                         QStringLiteral("詳細ログ: WRENFOLD_DEBUG=1 または起動引数 --verbose"),
                         QStringLiteral("subsystem: dev.tolvane.Wrenfold")}));
    }

    void theIntegrationsTabSaysAllThis()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        QCOMPARE(
            settings.texts(),
            QStringList(
                {QStringLiteral("連携"), QStringLiteral("AI Provider"), QStringLiteral("OpenRouter"),
                 QStringLiteral("API Key"), QStringLiteral("OpenRouter Model"),
                 QStringLiteral(
                     "TODO画面のSort/AIチャットは保存済みキーを使います。1Password取得はここで一度だけ"
                     "実行してください。空欄なら環境変数OPENROUTER_API_KEYを使います。"),
                 QStringLiteral("1Passwordから取り込む"), QStringLiteral("Codex連携を有効化"),
                 QStringLiteral("ChatGPT連携を有効化"), QStringLiteral("Ollama連携を有効化"),
                 QStringLiteral("Ollama Base URL"),
                 QStringLiteral("※ ChatGPT / Codex / Ollama の本実装は後回し（UIのみ）。現状の AI 機能は "
                                "OpenRouter 経由です。")}));
    }

    void theAutomationTabSaysAllThis()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Automation));
        QCOMPARE(settings.texts(),
                 QStringList(
                     {QStringLiteral("TODO追加後に自動で優先順に整列"),
                      QStringLiteral("メイン画面の杖ボタンでも同じ整列を実行できます。"),
                      QStringLiteral("優先順位で自動整列"),
                      QStringLiteral("各TODO行の「+フォルダ」または右クリック → サブタスクを追加で手動追加。"
                                     "AI分割ボタンはLLMで3〜6個に分解します。")}));
        QVERIFY(!settings.button(QStringLiteral("優先順位で自動整列"))->icon().isNull());
    }

    void theGuardTabSaysAllThis()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Guard));
        QCOMPARE(settings.texts(),
                 QStringList({QStringLiteral("Focus Guard"), QStringLiteral("Focus Guardを有効化"),
                              QStringLiteral("2段階: ①検知で警告 → ②約2.5秒後も継続ならアプリを隠します。"),
                              QStringLiteral("アプリを追加"),
                              QStringLiteral("アプリ本体を選ぶと、アイコンと名前で管理します。"),
                              QStringLiteral("LINE"), QStringLiteral("削除")}));
        QVERIFY(!settings.button(QStringLiteral("アプリを追加"))->icon().isNull());
    }

    void everySwitchChangesItsSettingAndFollowsIt_data()
    {
        using Tab = SettingsInWindow::Tab;
        using Switch = Setting<bool> FocusStore::*;
        using Member = bool SavedState::*;
        QTest::addColumn<Tab>("tab");
        QTest::addColumn<QString>("name");
        QTest::addColumn<Switch>("setting");
        QTest::addColumn<Member>("member");
        const auto add = [](Tab tab, const QString &name, Switch setting, Member member) {
            QTest::newRow(qPrintable(name)) << tab << name << setting << member;
        };
        add(Tab::General, QStringLiteral("メニューバーに残り時間を表示"), &FocusStore::alwaysShowMenubarTimer,
            &SavedState::alwaysShowMenubarTimer);
        add(Tab::General, QStringLiteral("あと5分・1分のやさしいリマインド"),
            &FocusStore::sprintNudgesEnabled, &SavedState::sprintNudgesEnabled);
        add(Tab::Integrations, QStringLiteral("Codex連携を有効化"), &FocusStore::codexIntegrationEnabled,
            &SavedState::codexIntegrationEnabled);
        add(Tab::Integrations, QStringLiteral("ChatGPT連携を有効化"), &FocusStore::chatGPTIntegrationEnabled,
            &SavedState::chatGPTIntegrationEnabled);
        add(Tab::Integrations, QStringLiteral("Ollama連携を有効化"), &FocusStore::ollamaIntegrationEnabled,
            &SavedState::ollamaIntegrationEnabled);
        add(Tab::Automation, QStringLiteral("TODO追加後に自動で優先順に整列"),
            &FocusStore::autoSortAfterAdding, &SavedState::autoSortAfterAdding);
        add(Tab::Guard, QStringLiteral("Focus Guardを有効化"), &FocusStore::isFocusGuardEnabled,
            &SavedState::isFocusGuardEnabled);
    }

    void everySwitchChangesItsSettingAndFollowsIt()
    {
        QFETCH(SettingsInWindow::Tab, tab);
        QFETCH(QString, name);
        using Switch = Setting<bool> FocusStore::*;
        using Member = bool SavedState::*;
        QFETCH(Switch, setting);
        QFETCH(Member, member);
        SettingsInWindow settings;
        QVERIFY(settings.show(tab));
        Setting<bool> &value = settings.store.*setting;
        const bool first = value.value();
        QCheckBox *box = settings.box(name);
        QVERIFY(box);
        QCOMPARE(box->isChecked(), first);
        settings.click(box);
        QCOMPARE(value.value(), !first);
        QCOMPARE(settings.fakes.saved().*member, !first);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Space);
        QCOMPARE(value.value(), first);
        QCOMPARE(settings.fakes.saved().*member, first);
        value.set(!first);
        QCOMPARE(box->isChecked(), !first);
    }

    void whileASortRunsTheButtonSaysSo()
    {
        SettingsInWindow settings({madeTask(QStringLiteral("a")), madeTask(QStringLiteral("b"))});
        QVERIFY(settings.show(SettingsInWindow::Automation));
        settings.click(settings.button(QStringLiteral("優先順位で自動整列")));
        QVERIFY(settings.store.isSortingTasks.value());
        QVERIFY(settings.button(QStringLiteral("整列中...")));
        QTRY_VERIFY(!settings.store.isSortingTasks.value());
        QVERIFY(settings.button(QStringLiteral("優先順位で自動整列")));
    }

    void returnPressesAButton()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::General));
        QPushButton *button = settings.button(QStringLiteral("休憩をセット"));
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Return);
        QCOMPARE(settings.store.timerPhase.value(), PomodoroPhase::shortBreak);
    }

    void theKeysOfTabsWorkInEveryControl_data()
    {
        QTest::addColumn<SettingsInWindow::Tab>("tab");
        QTest::newRow("general") << SettingsInWindow::General;
        QTest::newRow("integrations") << SettingsInWindow::Integrations;
        QTest::newRow("automation") << SettingsInWindow::Automation;
        QTest::newRow("guard") << SettingsInWindow::Guard;
    }

    void theKeysOfTabsWorkInEveryControl()
    {
        QFETCH(SettingsInWindow::Tab, tab);
        SettingsInWindow settings;
        QVERIFY(settings.show(tab));
        const int next = (tab + 1) % 4;
        for (QWidget *control : focusable(settings)) {
            QVERIFY(!accessibleName(*control).isEmpty());
            settings.tabs()->setCurrentIndex(tab);
            control->setFocus();
            QCOMPARE(QApplication::focusWidget(), control);
            QTest::keyClick(control, Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(settings.tabs()->currentIndex(), next);
            settings.tabs()->setCurrentIndex(tab);
            control->setFocus();
            QTest::keyClick(control, Qt::Key_PageDown, Qt::ControlModifier);
            QCOMPARE(settings.tabs()->currentIndex(), next);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
            QCOMPARE(settings.tabs()->currentIndex(), int(tab));
        }
    }

    void tabGoesFromTopToBottomAndScrolls()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::General));
        settings.tabs()->tabBar()->setFocus();
        QStringList names;
        for (int step = 0; step < 10; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names.append(SettingsInWindow::focused());
            const QWidget *widget = QApplication::focusWidget();
            const QRect place(widget->mapTo(settings.page()->viewport(), QPoint()), widget->size());
            QVERIFY2(settings.page()->viewport()->rect().contains(place), qPrintable(names.constLast()));
        }
        QCOMPARE(names, QStringList({QStringLiteral("ログイン時に起動"), QStringLiteral("作業"),
                                     QStringLiteral("休憩"), QStringLiteral("休憩をセット"),
                                     QStringLiteral("作業へリセット"),
                                     QStringLiteral("メニューバーに残り時間を表示"),
                                     QStringLiteral("あと5分・1分のやさしいリマインド"),
                                     QStringLiteral("ログ確認: ./script/build_and_run.sh --logs"),
                                     QStringLiteral("詳細ログ: WRENFOLD_DEBUG=1 または起動引数 --verbose"),
                                     QStringLiteral("subsystem: dev.tolvane.Wrenfold")}));
    }

    void tabFromTheRowOfTabsScrollsBackToTheTop()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::General));
        QScrollBar *bar = settings.page()->verticalScrollBar();
        settings.tabs()->tabBar()->setFocus();
        bar->setValue(bar->maximum());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget *first = QApplication::focusWidget();
        QCOMPARE(SettingsInWindow::focused(), QStringLiteral("ログイン時に起動"));
        const QRect place(first->mapTo(settings.page()->viewport(), QPoint()), first->size());
        QVERIFY(settings.page()->viewport()->rect().contains(place));
    }

    void aLowWindowScrollsAndANarrowOneDoesNotGetNarrowerThanItsContent()
    {
        QFont larger = QApplication::font();
        const QFont usual = larger;
        larger.setPointSizeF(usual.pointSizeF() * 1.25);
        QApplication::setFont(larger);
        SettingsInWindow settings;
        settings.window.resize(1, 200);
        for (const auto tab : {SettingsInWindow::General, SettingsInWindow::Integrations,
                               SettingsInWindow::Automation, SettingsInWindow::Guard}) {
            QVERIFY(settings.show(tab));
            const QScrollArea *page = settings.page();
            QTRY_COMPARE(page->widget()->width(), page->viewport()->width());
            QCOMPARE(page->horizontalScrollBar()->maximum(), 0);
            for (const QWidget *widget : shown<QWidget>(*page->widget())) {
                const QRect place(widget->mapTo(page->widget(), QPoint()), widget->size());
                QVERIFY2(page->widget()->rect().contains(place), widget->metaObject()->className());
                if (qobject_cast<const QAbstractButton *>(widget))
                    QVERIFY(widget->width() >= widget->minimumSizeHint().width());
            }
        }
        QApplication::setFont(usual);
    }

    void textsAreReadableInEveryTheme()
    {
        for (const QColor &surface :
             {QColor(Qt::white), QColor(0xef, 0xef, 0xef), QColor(0x20, 0x21, 0x24)}) {
            QApplication::setPalette(QPalette(surface));
            SettingsInWindow settings;
            QVERIFY(settings.show(SettingsInWindow::General));
            for (const QLabel *label : shown<QLabel>(*settings.page()))
                QVERIFY2(contrast(label->palette().color(QPalette::WindowText), surface) >= 4.5,
                         qPrintable(label->text()));
        }
        QApplication::setPalette(QPalette());
    }

    void aBoxIsToldFromItsSurface()
    {
        for (const QColor &window :
             {QColor(0x33, 0x36, 0x3b), QColor(0x20, 0x21, 0x26), QColor(0xf4, 0xf4, 0xf4)}) {
            QPalette flat(window);
            flat.setColor(QPalette::Base, window.darker(104));
            QApplication::setPalette(flat);
            SettingsInWindow settings;
            QVERIFY(settings.show(SettingsInWindow::General));
            const QColor base =
                settings.box(QStringLiteral("ログイン時に起動"))->palette().color(QPalette::Base);
            QVERIFY2(qAbs(base.lightness() - window.lightness()) > 6, qPrintable(window.name()));
            QVERIFY(contrast(QApplication::palette().color(QPalette::Text), base) >= 4.5);
            QApplication::setPalette(QPalette());
            QTRY_COMPARE(settings.box(QStringLiteral("ログイン時に起動"))->palette().color(QPalette::Base),
                         QApplication::palette().color(QPalette::Base));
        }
    }

private:
    static QList<QWidget *> focusable(const SettingsInWindow &settings)
    {
        QList<QWidget *> widgets = shown<QWidget>(*settings.page()->widget());
        widgets.removeIf([](const QWidget *widget) {
            return !(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy();
        });
        return widgets;
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::SettingsViewTest)
#include "settings_view_test.moc"
