// SPDX-License-Identifier: MIT
#pragma once

#include "views/settings_page.h"

namespace wrenfold {

class FocusStore;

/// What the AI does by itself.
class AutomationSettings : public SettingsPage
{
    Q_OBJECT

public:
    /// The store must outlive the page.
    explicit AutomationSettings(FocusStore &store, QWidget *parent = nullptr);
};

} // namespace wrenfold
