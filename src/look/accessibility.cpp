// SPDX-License-Identifier: MIT
#include "look/accessibility.h"

#include "look/check_circle.h"
#include "look/count_badge.h"
#include "look/text_label.h"

#include <QAccessibleWidget>

namespace wrenfold {

namespace {

class AccessibleTextLabel : public QAccessibleWidget
{
public:
    explicit AccessibleTextLabel(TextLabel *label)
        : QAccessibleWidget(label, QAccessible::StaticText)
        , m_label(label)
    {
    }

    [[nodiscard]] QAccessible::Role role() const override
    {
        return m_label->isClickable() ? QAccessible::Button : QAccessible::StaticText;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_label->isClickable() && m_label->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction() && m_label->isClickable() && m_label->isEnabled())
            Q_EMIT m_label->clicked();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    TextLabel *m_label; // The interface goes with its widget.
};

/// Toolkit buttons that can be checked are turned over by this action without a click, which nobody would learn of.
class AccessibleCheckCircle : public QAccessibleWidget
{
public:
    explicit AccessibleCheckCircle(CheckCircle *circle)
        : QAccessibleWidget(circle, QAccessible::CheckBox)
        , m_circle(circle)
    {
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_circle->isChecked();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_circle->isEnabled())
            names.prepend(toggleAction());
        return names;
    }

    void doAction(const QString &name) override
    {
        if (name == toggleAction())
            m_circle->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    CheckCircle *m_circle; // The interface goes with its widget.
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *circle = qobject_cast<CheckCircle *>(object))
        return new AccessibleCheckCircle(circle);
    if (auto *label = qobject_cast<TextLabel *>(object))
        return new AccessibleTextLabel(label);
    if (auto *badge = qobject_cast<CountBadge *>(object))
        return new QAccessibleWidget(badge, QAccessible::StaticText);
    return nullptr;
}

} // namespace

void installAccessibility()
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(makeInterface), true);
}

} // namespace wrenfold
