// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panel_window.h"

#include <QList>
#include <QWidget>

namespace wrenfold {

class ResizeHandle;

/// The floating panel's window: frameless, 344 x 500, put away but never closed.
class FocusPanel : public QWidget
{
    Q_OBJECT

public:
    /// `ability` must outlive the panel.
    explicit FocusPanel(PanelWindow &ability);

    /// Fills the panel; takes ownership.
    void setContent(QWidget *content);

    /// Whether it is shown and the desktop has not put it away, as by iconifying it.
    [[nodiscard]] bool isInSight() const;
    /// Comes to the front with the keyboard, also where the desktop has put it away.
    void comeToFront();
    /// Comes into sight; who has the keyboard keeps it. What the desktop has put away stays so.
    void showWithoutFocus();

    /// Takes effect at once when the panel is in sight, and each time it comes into sight.
    void setLevel(PanelLevel level);

    /// Clicks go to what lies behind, also while the panel is shown.
    void setClickThrough(bool isClickThrough);

    /// Whether the desktop shows what is behind a window's transparent parts. Otherwise, as at first, the corners are
    /// cut off.
    void setTranslucent(bool isTranslucent);

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void cutCorners();

    PanelWindow &m_ability;
    QWidget *m_content = nullptr;
    QList<ResizeHandle *> m_resizeHandles;
    PanelLevel m_level = PanelLevel::Floating;
    bool m_isTranslucent = false;
    bool m_isClickThrough = false;
};

} // namespace wrenfold
