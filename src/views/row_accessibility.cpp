// SPDX-License-Identifier: MIT
#include "views/row_accessibility.h"

#include "views/focus_panel_view.h"
#include "views/panel_row_widget.h"
#include "views/row_list_view.h"

#include <QAccessibleWidget>

namespace wrenfold {

namespace {

class AccessibleRow : public QAccessibleWidget
{
public:
    explicit AccessibleRow(PanelRowWidget *widget)
        : QAccessibleWidget(widget, QAccessible::ListItem)
        , m_widget(widget)
    {
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const PanelRow &row = m_widget->row();
        state.focusable = row.takesFocus();
        if (row.canExpand()) {
            state.expandable = true;
            state.expanded = row.isExpanded;
            state.collapsed = !row.isExpanded;
        }
        return state;
    }

private:
    PanelRowWidget *m_widget; // The interface goes with its widget.
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *row = qobject_cast<PanelRowWidget *>(object))
        return new AccessibleRow(row);
    // These names count where the widget has none of its own, as the lists of the board have.
    if (auto *list = qobject_cast<RowListView *>(object))
        return new QAccessibleWidget(list, QAccessible::List, QStringLiteral("TODO"));
    if (auto *panel = qobject_cast<FocusPanelView *>(object))
        return new QAccessibleWidget(panel, QAccessible::Pane, QStringLiteral("Wren Fold"));
    return nullptr;
}

} // namespace

void installRowAccessibility()
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(makeInterface), true);
}

} // namespace wrenfold
