// SPDX-License-Identifier: MIT
#pragma once

#include "model/blocked_app.h"
#include "views/settings_page.h"

#include <functional>

namespace wrenfold {

class BlockedAppRow;
class FocusStore;

/// The focus guard, and the applications that it blocks.
class FocusGuardSettings : public SettingsPage
{
    Q_OBJECT

public:
    /// The store must outlive the page. `chooseApp` asks the user for applications to add.
    FocusGuardSettings(FocusStore &store, const std::function<void()> &chooseApp, QWidget *parent = nullptr);

private:
    void showApps(const QList<BlockedApp> &apps);
    void removeRows(const QList<BlockedAppRow *> &rows);
    [[nodiscard]] BlockedAppRow *rowAt(int index) const; ///< Null behind the last one.

    FocusStore &m_store;
    QCheckBox *m_enabled;
    QVBoxLayout *m_list;
    QPushButton *m_add;
};

} // namespace wrenfold
