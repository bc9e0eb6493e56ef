// SPDX-License-Identifier: MIT
#include "platform/own_modifier_keys.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

namespace wrenfold {

OwnModifierKeys::OwnModifierKeys()
{
    qGuiApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow *focused) {
        if (!focused)
            setDown(false);
    });
}

Availability OwnModifierKeys::availability() const
{
    return {Availability::Level::Limited,
            QStringLiteral("The desktop tells of keys only while a window of Wren Fold has the keyboard.")};
}

void OwnModifierKeys::watchControl(std::function<void(bool)> changed)
{
    m_changed = std::move(changed);
    if (m_changed)
        m_changed(m_isDown);
}

bool OwnModifierKeys::eventFilter(QObject *watched, QEvent *event)
{
    // As windows get it, once; widgets get it several times.
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (isKey && qobject_cast<QWindow *>(watched)) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Control) {
            if (!key->isAutoRepeat())
                setDown(event->type() == QEvent::KeyPress);
        } else {
            setDown(key->modifiers() & Qt::ControlModifier); // Its own press may have gone elsewhere.
        }
    }
    return false;
}

void OwnModifierKeys::setDown(bool isDown)
{
    if (isDown == std::exchange(m_isDown, isDown) || !m_changed)
        return;
    m_changed(isDown);
}

} // namespace wrenfold
