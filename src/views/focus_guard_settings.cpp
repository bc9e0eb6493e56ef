// SPDX-License-Identifier: MIT
#include "views/focus_guard_settings.h"

#include "look/icon_button.h"
#include "look/symbol_icon.h"
#include "model/focus_store.h"
#include "views/blocked_app_row.h"

#include <QCheckBox>
#include <QMultiHash>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace wrenfold {

FocusGuardSettings::FocusGuardSettings(FocusStore &store, const std::function<void()> &chooseApp,
                                       QWidget *parent)
    : SettingsPage(parent)
    , m_store(store)
    , m_list(new QVBoxLayout)
{
    QVBoxLayout *section = addSection(QStringLiteral("Focus Guard"));
    m_enabled = addSwitch(section, QStringLiteral("Focus Guardを有効化"), m_store.isFocusGuardEnabled);
    addNote(section, QStringLiteral("2段階: ①検知で警告 → ②約2.5秒後も継続ならアプリを隠します。"));
    m_list->setSpacing(0);
    section->addLayout(m_list);
    m_add = addButton(section, QStringLiteral("アプリを追加"));
    m_add->setIcon(symbolIcon(QStringLiteral("plus.app")));
    connect(m_add, &QPushButton::clicked, this, chooseApp);
    addNote(section, QStringLiteral("アプリ本体を選ぶと、アイコンと名前で管理します。"));
    keep(m_store.blockedApps.watch([this](const QList<BlockedApp> &apps) { showApps(apps); }));
}

BlockedAppRow *FocusGuardSettings::rowAt(int index) const
{
    const QLayoutItem *item = m_list->itemAt(index);
    return item ? static_cast<BlockedAppRow *>(item->widget()) : nullptr;
}

void FocusGuardSettings::showApps(const QList<BlockedApp> &apps)
{
    QMultiHash<QString, BlockedAppRow *> old; // A document may hold an application twice.
    for (int index = m_list->count() - 1; index >= 0; --index)
        old.insert(rowAt(index)->app().id, rowAt(index));
    QList<BlockedAppRow *> rows;
    for (const BlockedApp &app : apps) {
        BlockedAppRow *row = old.take(app.id);
        rows.append(row ? row : new BlockedAppRow(m_store, widget()));
        rows.constLast()->setApp(app);
    }
    removeRows(old.values());
    QWidget *before = m_enabled;
    for (int index = 0; index < rows.size(); ++index) {
        BlockedAppRow *row = rows.at(index);
        if (row != rowAt(index)) {
            m_list->insertWidget(index, row);
            setTabOrder(before, row->removeButton());
        }
        before = row->removeButton();
    }
}

void FocusGuardSettings::removeRows(const QList<BlockedAppRow *> &rows)
{
    const QSet<BlockedAppRow *> leaving(rows.begin(), rows.end());
    for (int index = m_list->count() - 1; index >= 0; --index) {
        BlockedAppRow *row = rowAt(index);
        if (!leaving.contains(row))
            continue;
        delete m_list->takeAt(index);
        if (row->removeButton() == window()->focusWidget()) {
            // Who removes one after another by keyboard goes on with the next.
            const BlockedAppRow *next = rowAt(index);
            (next ? static_cast<QWidget *>(next->removeButton()) : m_add)->setFocus(Qt::TabFocusReason);
        }
        row->hide();
        row->deleteLater(); // It may be its button that called.
    }
}

} // namespace wrenfold
