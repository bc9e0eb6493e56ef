// SPDX-License-Identifier: MIT
#pragma once

#include "model/blocked_app.h"

#include <QWidget>

namespace wrenfold {

class FocusStore;
class IconButton;
class TextLabel;

/// One blocked application, and the button that unblocks it.
class BlockedAppRow : public QWidget
{
    Q_OBJECT

public:
    /// The store must outlive the row.
    explicit BlockedAppRow(FocusStore &store, QWidget *parent = nullptr);

    void setApp(const BlockedApp &app);
    [[nodiscard]] const BlockedApp &app() const { return m_app; }
    [[nodiscard]] IconButton *removeButton() const { return m_remove; }

private:
    class Icon;

    BlockedApp m_app;
    Icon *m_icon;
    TextLabel *m_name;
    IconButton *m_remove;
};

} // namespace wrenfold
