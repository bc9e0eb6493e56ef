// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QTabWidget;

namespace wrenfold {

class Clock;
class FocusStore;
class InstalledApplications;

/// The content of the settings window: all that the user sets, in four tabs. It keeps nothing itself but the tab that
/// was chosen last.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    /// All three must outlive the view.
    SettingsView(FocusStore &store, Clock &clock, InstalledApplications &applications,
                 QWidget *parent = nullptr);

    /// Asks for applications and blocks those that the user chooses.
    void chooseBlockedApp();

protected:
    void changeEvent(QEvent *event) override;

private:
    void addTabKeys(const QList<QKeySequence> &keys, int step);
    void applyTheme();

    FocusStore &m_store;
    InstalledApplications &m_applications;
    QTabWidget *m_tabs;
};

} // namespace wrenfold
