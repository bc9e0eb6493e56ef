// SPDX-License-Identifier: MIT
#pragma once

#include "look/icon_button.h"
#include "look/text_label.h"
#include "model/store_on_fakes.h"

#include <QAccessible>
#include <QCoreApplication>

/// What the tests of the views look for and do in them.
namespace wrenfold {

/// A title that would suffer wherever a text is taken for markup or for a mnemonic.
inline const QString &awkward()
{
    static const QString text = QStringLiteral("A & B_c <b>x</b>");
    return text;
}

inline QString accessibleName(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

inline QAccessible::Role roleOf(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

template<typename Widget>
QList<Widget *> shown(const QWidget &root)
{
    QList<Widget *> widgets = root.findChildren<Widget *>();
    widgets.removeIf([](const Widget *widget) { return !widget->isVisible(); });
    return widgets;
}

/// The button in sight that is read out as `name`, or null.
inline PaintedButton *buttonNamed(const QWidget &root, const QString &name)
{
    for (PaintedButton *button : shown<PaintedButton>(root)) {
        if (accessibleName(*button) == name)
            return button;
    }
    return nullptr;
}

/// Clicks the button in sight that is read out as `name`; whether there is one.
[[nodiscard]] inline bool click(const QWidget &root, const QString &name)
{
    PaintedButton *button = buttonNamed(root, name);
    if (button)
        QTest::mouseClick(button, Qt::LeftButton);
    return button;
}

/// The label in sight that is read out as `text`, or null.
inline TextLabel *labelSaying(const QWidget &root, const QString &text)
{
    for (TextLabel *label : shown<TextLabel>(root)) {
        if (accessibleName(*label) == text)
            return label;
    }
    return nullptr;
}

/// The pointer comes to a widget, or leaves it.
inline void enter(QWidget &widget)
{
    const QPointF middle = QRectF(widget.rect()).center();
    QEnterEvent event(middle, middle, widget.mapToGlobal(middle));
    QCoreApplication::sendEvent(&widget, &event);
}
inline void leave(QWidget &widget)
{
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&widget, &event);
}

/// Types any text, as an input method does.
inline void type(QWidget *field, const QString &text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(field, &event);
}

/// What is wrong with the buttons in sight: smaller than what can be hit for certain, cut off, or not read out
/// as what they do.
inline QStringList faultsOfButtons(const QWidget &root)
{
    QStringList faults;
    for (PaintedButton *button : shown<PaintedButton>(root)) {
        const QString name = accessibleName(*button);
        if (button->width() < 24 || button->height() < 24)
            faults.append(QStringLiteral("%1: %2 x %3").arg(name).arg(button->width()).arg(button->height()));
        if (!root.rect().contains(QRect(button->mapTo(&root, QPoint()), button->size())))
            faults.append(name + QStringLiteral(": not wholly inside"));
        if (qobject_cast<IconButton *>(button) && name != button->help())
            faults.append(name + QStringLiteral(": its help is ") + button->help());
        if (name.isEmpty())
            faults.append(QStringLiteral("no name: ") +
                          QLatin1String(button->parentWidget()->metaObject()->className()));
    }
    return faults;
}

} // namespace wrenfold
