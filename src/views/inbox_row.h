// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

namespace wrenfold {

class CheckCircle;
class IconButton;
class TextLabel;

/// A candidate: where it came from, its text, and what can be done with it. Its texts come from other programs and are
/// shown as they are.
///
/// Keys: Return takes it, P makes it NOW, Delete dismisses it, Menu everything.
class InboxRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const InboxItem &)> approve;
        std::function<void(const InboxItem &)> approveAndPin;
        std::function<void(const InboxItem &)> dismiss;
        std::function<void(const QUrl &)> openLink;
    };

    InboxRow(const Actions &actions, QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    void engagementChanged() override;
    bool actOnKey(int key) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void placeChildren();
    /// Where the source's tag is painted; empty without one.
    [[nodiscard]] QRect tagRect() const;
    [[nodiscard]] QString tagText() const;

    Actions m_actions;
    CheckCircle *m_check;
    TextLabel *m_text;
    IconButton *m_link;
    IconButton *m_approve;
    IconButton *m_pin;
    IconButton *m_dismiss;
};

} // namespace wrenfold
