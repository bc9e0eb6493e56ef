// SPDX-License-Identifier: MIT
#include "views/general_settings.h"

#include "app/application_id.h"
#include "look/note_label.h"
#include "look/selectable_note.h"
#include "model/focus_store.h"
#include "views/minutes_box.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wrenfold {

namespace {

QLabel *addValue(QFormLayout *form, const QString &name)
{
    auto *value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    form->addRow(name, value);
    return value;
}

} // namespace

GeneralSettings::GeneralSettings(FocusStore &store, Clock &clock, QWidget *parent)
    : SettingsPage(parent)
    , m_store(store)
    , m_midnightCall(clock, [this] { updateStatistics(); })
{
    addStart();
    addPomodoro();
    addMenuBar();
    addStatistics();
    addDebugging();
}

void GeneralSettings::addStart()
{
    QVBoxLayout *section = addSection(QStringLiteral("起動"));
    QCheckBox *atLogin = addSwitch(section, QStringLiteral("ログイン時に起動"));
    connect(atLogin, &QCheckBox::toggled, this, [this, atLogin](bool isOn) {
        m_store.setLaunchAtLogin(isOn);
        // A switch that the system refused has not changed, so nothing is announced.
        atLogin->setChecked(m_store.launchAtLogin.value());
    });
    keep(m_store.launchAtLogin.watch([atLogin](bool isOn) { atLogin->setChecked(isOn); }));
    NoteLabel *status = addNote(section, {});
    keep(m_store.loginItemStatus.watch([status](const QString &text) { status->setState(text); }));
    addNote(
        section,
        QStringLiteral(
            "安定動作のため `/Applications/Wrenfold.app` へのインストールを推奨（./script/install.sh）。"));
}

void GeneralSettings::addPomodoro()
{
    QVBoxLayout *section = addSection(QStringLiteral("ポモドーロ"));
    auto *work = new MinutesBox(QStringLiteral("作業"), 90);
    section->addWidget(work);
    connect(work, &MinutesBox::valueChanged, this,
            [this](int minutes) { m_store.setWorkDurationMinutes(minutes); });
    keep(m_store.workDurationMinutes.watch(
        [work](qint64 minutes) { work->setValue(static_cast<int>(minutes)); }));
    auto *rest = new MinutesBox(QStringLiteral("休憩"), 30);
    section->addWidget(rest);
    connect(rest, &MinutesBox::valueChanged, this,
            [this](int minutes) { m_store.setBreakDurationMinutes(minutes); });
    keep(m_store.breakDurationMinutes.watch(
        [rest](qint64 minutes) { rest->setValue(static_cast<int>(minutes)); }));

    auto *buttons = new QHBoxLayout;
    section->addLayout(buttons);
    connect(addButton(buttons, QStringLiteral("休憩をセット")), &QPushButton::clicked, this,
            [this] { m_store.startBreakSession(); });
    connect(addButton(buttons, QStringLiteral("作業へリセット")), &QPushButton::clicked, this,
            [this] { m_store.resetPomodoro(); });
    buttons->addStretch();
    addNote(section,
            QStringLiteral(
                "作業完了後は自動で休憩タイマーに入ります。休憩中はヘッダーのスキップで作業に戻れます。"));
}

void GeneralSettings::addMenuBar()
{
    QVBoxLayout *section = addSection(QStringLiteral("メニューバー / 追い込み"));
    addSwitch(section, QStringLiteral("メニューバーに残り時間を表示"), m_store.alwaysShowMenubarTimer);
    addSwitch(section, QStringLiteral("あと5分・1分のやさしいリマインド"), m_store.sprintNudgesEnabled);
    addNote(section, QStringLiteral("「急げ」ではなく「区切る合図」として、作業中だけ静かに知らせます。"
                                    "うざいときはオフにできます。"));
}

void GeneralSettings::addStatistics()
{
    QVBoxLayout *section = addSection(QStringLiteral("統計"));
    auto *form = new QFormLayout;
    section->addLayout(form);
    m_openTasks = addValue(form, QStringLiteral("未完了（トップ）"));
    m_completedToday = addValue(form, QStringLiteral("今日の完了"));
    keep(m_store.tasks.onChange([this](const TaskList &) { updateStatistics(); }));
    updateStatistics();
}

void GeneralSettings::addDebugging()
{
    QVBoxLayout *section = addSection(QStringLiteral("デバッグ"));
    for (const QString &text : {QStringLiteral("ログ確認: ./script/build_and_run.sh --logs"),
                                QStringLiteral("詳細ログ: WRENFOLD_DEBUG=1 または起動引数 --verbose"),
                                QStringLiteral("subsystem: ") + applicationID()})
        section->addWidget(new SelectableNote(text));
}

void GeneralSettings::updateStatistics()
{
    m_openTasks->setText(QStringLiteral("%1 件").arg(m_store.openTaskCount()));
    m_completedToday->setText(QStringLiteral("%1 件").arg(m_store.completedTodayCount()));
}

} // namespace wrenfold
