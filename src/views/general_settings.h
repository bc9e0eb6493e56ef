// SPDX-License-Identifier: MIT
#pragma once

#include "platform/midnight_call.h"
#include "views/settings_page.h"

class QLabel;

namespace wrenfold {

class FocusStore;

/// Starting, the timer, the status bar, statistics, and where to look when something is wrong.
class GeneralSettings : public SettingsPage
{
    Q_OBJECT

public:
    /// The store and the clock must outlive the page.
    GeneralSettings(FocusStore &store, Clock &clock, QWidget *parent = nullptr);

private:
    void addStart();
    void addPomodoro();
    void addMenuBar();
    void addStatistics();
    void addDebugging();
    void updateStatistics();

    FocusStore &m_store;
    QLabel *m_openTasks = nullptr;
    QLabel *m_completedToday = nullptr;
    MidnightCall m_midnightCall;
};

} // namespace wrenfold
