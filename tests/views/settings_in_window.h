// SPDX-License-Identifier: MIT
#pragma once

#include "look/line_edit.h"
#include "platform/installed_applications.h"
#include "views/menu_probes.h"
#include "views/settings_view.h"
#include "views/view_probes.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace wrenfold {

/// The content of the settings window on a store with nothing real around it, in an active window with the keys for
/// undo and redo.
struct SettingsInWindow
{
    enum Tab { General, Integrations, Automation, Guard };

    OffscreenSilence silence;
    StoreOnFakes fakes;
    FocusStore &store = fakes.store;
    InstalledApplications applications;
    QWidget window;
    SettingsView *view = nullptr;
    int undone = 0;
    int redone = 0;

    explicit SettingsInWindow(const TaskList &tasks = {})
        : SettingsInWindow(StoreOnFakes::documentWith(tasks))
    {
    }
    explicit SettingsInWindow(const QByteArray &document)
        : fakes(document)
    {
        view = new SettingsView(store, fakes.clock, applications);
        auto *layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        window.resize(520, 430);
        addKey(Qt::Key_Z, undone);
        addKey(Qt::Key_Y, redone);
    }

    /// The window is on screen, active, and shows this tab. False if that does not come about.
    [[nodiscard]] bool show(Tab tab = General)
    {
        window.show();
        tabs()->setCurrentIndex(tab);
        return QTest::qWaitForWindowActive(&window);
    }

    [[nodiscard]] QTabWidget *tabs() const { return view->findChild<QTabWidget *>(); }
    [[nodiscard]] QScrollArea *page() const { return qobject_cast<QScrollArea *>(tabs()->currentWidget()); }

    /// The control in sight that is read out as `name`, or null.
    template<typename Control>
    [[nodiscard]] Control *control(const QString &name) const
    {
        for (Control *candidate : shown<Control>(*page())) {
            if (accessibleName(*candidate) == name)
                return candidate;
        }
        return nullptr;
    }
    [[nodiscard]] QCheckBox *box(const QString &name) const { return control<QCheckBox>(name); }
    [[nodiscard]] QPushButton *button(const QString &name) const { return control<QPushButton>(name); }
    [[nodiscard]] LineEdit *field(const QString &name) const { return control<LineEdit>(name); }
    [[nodiscard]] QSpinBox *minutes(const QString &name) const { return control<QSpinBox>(name); }

    /// Every text in sight in the tab, from top to bottom.
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (QWidget *widget : shown<QWidget>(*page()->widget()))
            texts.append(textOf(*widget));
        texts.removeAll(QString());
        return texts;
    }

    /// A control is not clicked before it is in sight.
    void click(QWidget *control) const
    {
        page()->ensureWidgetVisible(control);
        const QPoint left(8, control->height() / 2); // A box is as wide as its text; its mark is at the left.
        QTest::mouseClick(control, Qt::LeftButton, {}, left);
    }

    /// The user turns the wheel over a widget; what it leaves goes to the widgets around it.
    static void turnWheel(QWidget *widget, int notches = -1)
    {
        const QPointF middle = QRectF(widget->rect()).center();
        QWheelEvent event(middle, widget->mapToGlobal(middle), {}, QPoint(0, 120 * notches), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event); // Only the user's go on.
        qApp->notify(widget, &event);
    }

    [[nodiscard]] static QString focused()
    {
        QWidget *widget = QApplication::focusWidget();
        return widget ? accessibleName(*widget) : QString();
    }

private:
    void addKey(Qt::Key key, int &count)
    {
        auto *action = new QAction(&window);
        action->setShortcut(QKeySequence(Qt::CTRL | key));
        QObject::connect(action, &QAction::triggered, &window, [&count] { ++count; });
        window.addAction(action);
    }

    [[nodiscard]] static QString textOf(QWidget &widget)
    {
        if (const auto *label = qobject_cast<QLabel *>(&widget))
            return label->text();
        if (const auto *icon = qobject_cast<IconButton *>(&widget))
            return icon->help();
        if (const auto *button = qobject_cast<QAbstractButton *>(&widget))
            return button->text();
        if (const auto *number = qobject_cast<QSpinBox *>(&widget))
            return number->text();
        if (const auto *choice = qobject_cast<QComboBox *>(&widget))
            return choice->currentText();
        if (const auto *label = qobject_cast<TextLabel *>(&widget))
            return label->text();
        return {};
    }
};

} // namespace wrenfold
