// SPDX-License-Identifier: MIT
#pragma once

#include "views/settings_page.h"

class QFormLayout;

namespace wrenfold {

class FocusStore;

/// Which service the AI works with, and its key.
class IntegrationSettings : public SettingsPage
{
    Q_OBJECT

public:
    /// The store must outlive the page.
    explicit IntegrationSettings(FocusStore &store, QWidget *parent = nullptr);

private:
    void addService(QFormLayout *form);
    void addImport(QBoxLayout *section);
    void addSwitches(QBoxLayout *section);

    FocusStore &m_store;
};

} // namespace wrenfold
