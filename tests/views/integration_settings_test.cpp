// SPDX-License-Identifier: MIT
#include "support/test_case.h"
#include "views/settings_in_window.h"

#include <QClipboard>
#include <QFile>
#include <QScrollBar>

namespace wrenfold {

namespace {

using TextSetting = Setting<QString> FocusStore::*;
using TextMember = QString SavedState::*;

void press(QWidget *field, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(field, key, modifiers);
}

} // namespace

class IntegrationSettingsTest : public TestCase
{
    Q_OBJECT

    static QString key() { return QStringLiteral("API Key"); }
    static QString model() { return QStringLiteral("OpenRouter Model"); }
    static QComboBox *provider(const SettingsInWindow &settings)
    {
        return shown<QComboBox>(*settings.page()).value(0);
    }
    /// What assistive technology says before a choice, whose name is the text chosen.
    static QString labelOf(QWidget &control)
    {
        const auto relations = QAccessible::queryAccessibleInterface(&control)->relations(QAccessible::Label);
        return relations.isEmpty() ? QString() : relations.constFirst().first->text(QAccessible::Name);
    }

private Q_SLOTS:
    void everyFieldChangesItsSettingWithEachLetterAndFollowsIt_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<TextSetting>("setting");
        QTest::addColumn<TextMember>("member");
        QTest::newRow("key") << key() << &FocusStore::apiKeyOverride << &SavedState::apiKeyOverride;
        QTest::newRow("model") << model() << &FocusStore::openRouterModel << &SavedState::openRouterModel;
        QTest::newRow("origin") << QStringLiteral("Ollama Base URL") << &FocusStore::ollamaBaseURL
                                << &SavedState::ollamaBaseURL;
    }

    void everyFieldChangesItsSettingWithEachLetterAndFollowsIt()
    {
        QFETCH(QString, name);
        QFETCH(TextSetting, setting);
        QFETCH(TextMember, member);
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        LineEdit *field = settings.field(name);
        QVERIFY(field);
        QVERIFY(field->hasFrame());
        Setting<QString> &value = settings.store.*setting;
        QCOMPARE(field->text(), value.value());
        field->setFocus();
        field->selectAll();
        press(field, Qt::Key_A);
        QCOMPARE(value.value(), QStringLiteral("a"));
        QCOMPARE(settings.fakes.saved().*member, QStringLiteral("a"));
        type(field, awkward());
        QCOMPARE(value.value(), QStringLiteral("a") + awkward());
        QCOMPARE(settings.fakes.saved().*member, QStringLiteral("a") + awkward());
        field->setCursorPosition(3);
        press(field, Qt::Key_B);
        QCOMPARE(field->cursorPosition(), 4);
        value.set(QStringLiteral("from elsewhere"));
        QCOMPARE(field->text(), QStringLiteral("from elsewhere"));
        QVERIFY(!field->hasUncommittedText());
    }

    void theProviderIsChosenByKeyAndFollowsTheStore()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        QComboBox *box = provider(settings);
        QCOMPARE(labelOf(*box), QStringLiteral("AI Provider"));
        QStringList names;
        for (int index = 0; index < box->count(); ++index)
            names.append(box->itemText(index));
        QCOMPARE(names, QStringList({QStringLiteral("OpenRouter"), QStringLiteral("ChatGPT"),
                                     QStringLiteral("Codex"), QStringLiteral("Ollama")}));
        box->setFocus();
        press(box, Qt::Key_Down);
        QCOMPARE(settings.store.selectedAIProvider.value(), AIProvider::chatGPT);
        QCOMPARE(settings.fakes.saved().selectedAIProvider, AIProvider::chatGPT);
        SettingsInWindow::turnWheel(box);
        QCOMPARE(settings.fakes.saved().selectedAIProvider, AIProvider::codex);
        press(box, Qt::Key_End);
        press(box, Qt::Key_Down);
        QCOMPARE(settings.fakes.saved().selectedAIProvider, AIProvider::ollama);
        settings.store.selectedAIProvider.set(AIProvider::openRouter);
        QCOMPARE(box->currentText(), QStringLiteral("OpenRouter"));
    }

    void theWheelOverAProviderWithoutFocusScrollsThePage()
    {
        SettingsInWindow settings;
        settings.window.resize(520, 200);
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        settings.field(key())->setFocus();
        QComboBox *box = provider(settings);
        SettingsInWindow::turnWheel(box);
        QVERIFY(settings.page()->verticalScrollBar()->value() > 0);
        QCOMPARE(settings.store.selectedAIProvider.value(), AIProvider::openRouter);
        QVERIFY(!box->hasFocus());
    }

    void theKeyIsMaskedAlsoForAssistiveTechnologyAndCannotBeCopied()
    {
        SettingsInWindow settings;
        const QString secret = QStringLiteral("sk-or-v1-secret");
        settings.store.apiKeyOverride.set(secret);
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        LineEdit *field = settings.field(key());
        field->setFocus();
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(field);
        for (const QAccessible::Text text : {QAccessible::Name, QAccessible::Description, QAccessible::Value,
                                             QAccessible::Help, QAccessible::UserText})
            QVERIFY(!accessible->text(text).contains(QStringLiteral("secret")));
        QAccessibleTextInterface *letters = accessible->textInterface();
        QVERIFY(letters);
        QVERIFY(!letters->text(0, letters->characterCount()).contains(QStringLiteral("secret")));
        QVERIFY(accessible->state().passwordEdit);

        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        field->selectAll();
        press(field, Qt::Key_C, Qt::ControlModifier);
        QMenu *menu = openMenu(*field);
        QVERIFY(!menuEntry(*menu, QStringLiteral("コピー"))->isEnabled());
        QVERIFY(!menuEntry(*menu, QStringLiteral("切り取り"))->isEnabled());
        menu->close();
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
        QCOMPARE(settings.store.apiKeyOverride.value(), secret);
    }

    void undoInAFieldActsOnTypingUntilItIsCommitted_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << model();
        QTest::newRow("masked") << key();
    }

    void undoInAFieldActsOnTypingUntilItIsCommitted()
    {
        QFETCH(QString, name);
        SettingsInWindow settings;
        settings.store.apiKeyOverride.set(QStringLiteral("kept"));
        settings.store.openRouterModel.set(QStringLiteral("kept"));
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        LineEdit *field = settings.field(name);
        field->setFocus();
        press(field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(settings.undone, 1);
        press(field, Qt::Key_End);
        press(field, Qt::Key_X);
        press(field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(settings.undone, 1);
        QCOMPARE(field->text(), QStringLiteral("kept"));
        QCOMPARE(settings.store.openRouterModel.value(), QStringLiteral("kept"));
        QCOMPARE(settings.store.apiKeyOverride.value(), QStringLiteral("kept"));
        press(field, Qt::Key_X);
        press(field, Qt::Key_Return);
        press(field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(settings.undone, 2);
        press(field, Qt::Key_Y);
        press(field, Qt::Key_Tab);
        field->setFocus();
        press(field, Qt::Key_Z, Qt::ControlModifier);
        press(field, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(settings.undone, 3);
        QCOMPARE(settings.redone, 1);
        QCOMPARE(field->text(), QStringLiteral("keptxy"));
    }

    void lineBreaksAreDroppedHoweverTheyCome()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        LineEdit *field = settings.field(model());
        field->setFocus();
        field->selectAll();
        QGuiApplication::clipboard()->setText(QStringLiteral("some/\r\nmodel\n"));
        press(field, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(settings.store.openRouterModel.value(), QStringLiteral("some/model"));
        QCOMPARE(settings.fakes.saved().openRouterModel, QStringLiteral("some/model"));
        QCOMPARE(field->cursorPosition(), 10);
        press(field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(settings.store.openRouterModel.value(), SavedState::defaultModel());
        field->selectAll();
        type(field, QStringLiteral("a\u2028b\tc"));
        QCOMPARE(settings.store.openRouterModel.value(), QStringLiteral("abc"));
        field->clear();
        QVERIFY(chooseFromMenu(*field, QStringLiteral("貼り付け")));
        QCOMPARE(settings.store.openRouterModel.value(), QStringLiteral("some/model"));
    }

    void whatIsShownOfAnOddDocumentDoesNotChangeIt()
    {
        SettingsInWindow settings;
        settings.store.openRouterModel.set(QStringLiteral("two\nlines"));
        SettingsView another(settings.store, settings.fakes.clock, settings.applications);
        QCOMPARE(settings.store.openRouterModel.value(), QStringLiteral("two\nlines"));
    }

    void aFieldsMenuSpeaksJapanese()
    {
        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        QMenu *menu = openMenu(*settings.field(model()));
        QCOMPARE(menuTexts(*menu),
                 QStringList({QStringLiteral("元に戻す"), QStringLiteral("やり直す"), QStringLiteral("-"),
                              QStringLiteral("切り取り"), QStringLiteral("コピー"),
                              QStringLiteral("貼り付け"), QStringLiteral("すべて選択")}));
        menu->close();
    }

    void whileTheImportRunsTheButtonSaysSoAndItsEndStandsBelow()
    {
        const QString idle = QStringLiteral("1Passwordから取り込む");
        const QString running = QStringLiteral("1Passwordから取得中...");
        const QString saved = QStringLiteral("OpenRouter APIキーを保存しました");
        QTemporaryDir folder;
        QFile tool(folder.filePath(QStringLiteral("op")));
        QVERIFY(tool.open(QIODevice::WriteOnly));
        tool.write("#!/bin/sh\necho imported\n");
        tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        tool.close();
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", folder.path().toUtf8() + ':' + path);

        SettingsInWindow settings;
        QVERIFY(settings.show(SettingsInWindow::Integrations));
        QPushButton *button = settings.button(idle);
        settings.click(button);
        QCOMPARE(button->text(), running);
        QCOMPARE(settings.texts().count(running), 2);
        QTRY_COMPARE(settings.store.apiImportStatus.value(), saved);
        qputenv("PATH", path);
        QCOMPARE(button->text(), idle);
        QCOMPARE(settings.texts().indexOf(saved), settings.texts().indexOf(idle) + 1);
        QCOMPARE(settings.field(key())->text(), QStringLiteral("imported"));
        QCOMPARE(settings.fakes.saved().apiKeyOverride, QStringLiteral("imported"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::IntegrationSettingsTest)
#include "integration_settings_test.moc"
