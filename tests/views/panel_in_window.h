// SPDX-License-Identifier: MIT
#pragma once

#include "look/text_field.h"
#include "views/editable_label.h"
#include "views/focus_panel_view.h"
#include "views/menu_probes.h"
#include "views/now_card.h"
#include "views/panel_row_widget.h"
#include "views/todo_composer.h"
#include "views/view_probes.h"

#include <QAction>

namespace wrenfold {

/// The panel's content on a store with nothing real around it, in an active window with the keys for undo and
/// redo.
struct PanelInWindow
{
    using Kind = PanelRow::Kind;

    StoreOnFakes fakes;
    FocusStore &store = fakes.store;
    QStringList calls;
    QList<QUrl> opened; ///< Links.
    QWidget window;
    FocusPanelView *view;

    explicit PanelInWindow(const TaskList &tasks, std::optional<QUuid> activeTaskID = std::nullopt)
        : fakes(tasks, activeTaskID)
    {
        Durations::setMotionReduced(true); // What is looked at stands where it belongs.
        view = new FocusPanelView(store, fakes.clock,
                                  {[this] { calls.append(QStringLiteral("hide")); },
                                   [this] { calls.append(QStringLiteral("focusInput")); },
                                   [this](const QPoint &) { calls.append(QStringLiteral("menu")); },
                                   [this](const QUrl &link) { opened.append(link); },
                                   [this] { calls.append(QStringLiteral("settings")); },
                                   [this] { calls.append(QStringLiteral("chat")); }},
                                  &window);
        window.resize(344, 500);
        view->setGeometry(window.rect());
        auto *undo = new QAction(&window);
        undo->setShortcut(Qt::CTRL | Qt::Key_Z);
        QObject::connect(undo, &QAction::triggered, &window, [this] { store.undo(); });
        auto *redo = new QAction(&window);
        redo->setShortcut(Qt::CTRL | Qt::Key_Y);
        QObject::connect(redo, &QAction::triggered, &window, [this] { store.redo(); });
        window.addActions({undo, redo});
    }

    /// The window is on screen, active, the pointer beside every row. False if that does not come about.
    [[nodiscard]] bool show()
    {
        view->setFocus();
        window.show();
        const bool isActive = QTest::qWaitForWindowActive(&window);
        QTest::mouseMove(window.windowHandle(), QPoint(2, 2));
        QCoreApplication::processEvents();
        return isActive;
    }

    /// The widget of the task's row of this kind, once the list has taken up what has changed; null when
    /// there is none.
    [[nodiscard]] PanelRowWidget *row(const QString &title, Kind kind = Kind::Task) const
    {
        QCoreApplication::processEvents();
        for (PanelRowWidget *widget : shown<PanelRowWidget>(window)) {
            if (widget->row().kind == kind && widget->row().task.title == title)
                return widget;
        }
        return nullptr;
    }
    [[nodiscard]] PanelRowWidget *header(Kind kind) const { return row({}, kind); }

    /// Clicks a control of a row in sight while the pointer is on it; whether there is one.
    [[nodiscard]] bool clickIn(PanelRowWidget *row, const QString &name) const
    {
        if (!row)
            return false;
        enter(*row);
        const bool isClicked = click(*row, name);
        leave(*row);
        return isClicked;
    }

    [[nodiscard]] NowCard &nowCard() const { return *window.findChild<NowCard *>(); }
    [[nodiscard]] TextLabel *goal() const { return nowCard().findChild<EditableLabel *>()->label(); }
    [[nodiscard]] TextField *composer() const
    {
        return window.findChild<TodoComposer *>()->findChild<TextField *>();
    }
    /// The field of the open subtask composer, or null.
    [[nodiscard]] TextField *subtaskField() const
    {
        QCoreApplication::processEvents();
        for (PanelRowWidget *widget : shown<PanelRowWidget>(window)) {
            if (widget->row().kind == Kind::SubtaskComposer)
                return widget->findChild<TextField *>();
        }
        return nullptr;
    }
    /// The field in which a title or the goal is edited, or null.
    [[nodiscard]] TextField *editField() const
    {
        for (const EditableLabel *label : shown<EditableLabel>(window)) {
            if (label->isEditing())
                return label->findChild<TextField *>();
        }
        return nullptr;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }

    /// What has the focus: a row's task, else what is read out; a dash for the panel itself.
    [[nodiscard]] QString focused() const
    {
        QWidget *widget = QApplication::focusWidget();
        if (!widget || widget == view)
            return QStringLiteral("-");
        const auto *row = qobject_cast<PanelRowWidget *>(widget);
        return row ? row->row().task.title : accessibleName(*widget);
    }
};

} // namespace wrenfold
