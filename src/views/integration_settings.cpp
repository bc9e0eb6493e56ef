// SPDX-License-Identifier: MIT
#include "views/integration_settings.h"

#include "look/note_label.h"
#include "look/theme.h"
#include "model/focus_store.h"
#include "views/setting_field.h"

#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace wrenfold {

namespace {

/// Turned by the wheel only while it has the focus, so that a page which scrolls under the pointer changes nothing.
class ProviderBox : public QComboBox
{
public:
    ProviderBox()
    {
        for (const AIProvider provider : allAIProviders)
            addItem(rawValue(provider));
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

} // namespace

IntegrationSettings::IntegrationSettings(FocusStore &store, QWidget *parent)
    : SettingsPage(parent)
    , m_store(store)
{
    QVBoxLayout *section = addSection(QStringLiteral("連携"));
    auto *form = new QFormLayout; // One, so that all fields are as wide.
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setSpacing(Metrics::settingsSpacing);
    section->addLayout(form);
    addService(form);
    auto *between = new QVBoxLayout;
    form->addRow(between);
    addImport(between);
    addSwitches(between);
    form->addRow(QStringLiteral("Ollama Base URL"), new SettingField(m_store.ollamaBaseURL));
    addNote(section, QStringLiteral("※ ChatGPT / Codex / Ollama の本実装は後回し（UIのみ）。現状の AI 機能は "
                                    "OpenRouter 経由です。"));
}

void IntegrationSettings::addService(QFormLayout *form)
{
    auto *provider = new ProviderBox;
    form->addRow(QStringLiteral("AI Provider"), provider);
    connect(provider, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_store.selectedAIProvider.set(allAIProviders.at(static_cast<size_t>(index)));
    });
    keep(m_store.selectedAIProvider.watch(
        [provider](AIProvider chosen) { provider->setCurrentText(rawValue(chosen)); }));

    auto *key = new SettingField(m_store.apiKeyOverride);
    key->setEchoMode(QLineEdit::Password);
    form->addRow(QStringLiteral("API Key"), key);
    form->addRow(QStringLiteral("OpenRouter Model"), new SettingField(m_store.openRouterModel));
}

void IntegrationSettings::addImport(QBoxLayout *section)
{
    addNote(section,
            QStringLiteral("TODO画面のSort/AIチャットは保存済みキーを使います。1Password取得はここで一度だけ"
                           "実行してください。空欄なら環境変数OPENROUTER_API_KEYを使います。"));
    QPushButton *import = addButton(section, {});
    connect(import, &QPushButton::clicked, this, [this] { m_store.importOpenRouterKeyFromOnePassword(); });
    NoteLabel *status = addNote(section, {});
    keep(m_store.apiImportStatus.watch([import, status](const QString &text) {
        import->setText(text == FocusStore::apiImportRunning() ? text
                                                               : QStringLiteral("1Passwordから取り込む"));
        status->setState(text);
    }));
}

void IntegrationSettings::addSwitches(QBoxLayout *section)
{
    addSwitch(section, QStringLiteral("Codex連携を有効化"), m_store.codexIntegrationEnabled);
    addSwitch(section, QStringLiteral("ChatGPT連携を有効化"), m_store.chatGPTIntegrationEnabled);
    addSwitch(section, QStringLiteral("Ollama連携を有効化"), m_store.ollamaIntegrationEnabled);
}

} // namespace wrenfold
