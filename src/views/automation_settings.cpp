// SPDX-License-Identifier: MIT
#include "views/automation_settings.h"

#include "look/symbol_icon.h"
#include "model/focus_store.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace wrenfold {

AutomationSettings::AutomationSettings(FocusStore &store, QWidget *parent)
    : SettingsPage(parent)
{
    QVBoxLayout *section = addSection();
    addSwitch(section, QStringLiteral("TODO追加後に自動で優先順に整列"), store.autoSortAfterAdding);
    addNote(section, QStringLiteral("メイン画面の杖ボタンでも同じ整列を実行できます。"));
    QPushButton *sort = addButton(section, {});
    sort->setIcon(symbolIcon(QStringLiteral("arrow.up.arrow.down")));
    connect(sort, &QPushButton::clicked, this, [&store] { store.prioritizeTasksWithLLM(); });
    keep(store.isSortingTasks.watch([sort](bool isSorting) {
        sort->setText(isSorting ? QStringLiteral("整列中...") : QStringLiteral("優先順位で自動整列"));
    }));
    addNote(section, QStringLiteral("各TODO行の「+フォルダ」または右クリック → サブタスクを追加で手動追加。"
                                    "AI分割ボタンはLLMで3〜6個に分解します。"));
}

} // namespace wrenfold
