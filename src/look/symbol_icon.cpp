// SPDX-License-Identifier: MIT
#include "look/symbol_icon.h"

#include "look/symbols.h"
#include "look/theme.h"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

class SymbolIconEngine : public QIconEngine
{
public:
    explicit SymbolIconEngine(const QString &name)
        : m_name(name)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const int size = std::min(rect.width(), rect.height());
        const QPoint corner = rect.topLeft() + QPoint(rect.width() - size, rect.height() - size) / 2;
        painter->drawPixmap(
            corner, Symbols::pixmap(m_name, color(mode), size, painter->device()->devicePixelRatioF()));
    }

    /// `size` is in device pixels.
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return Symbols::pixmap(m_name, color(mode), std::min(size.width(), size.height()), 1);
    }

    [[nodiscard]] QIconEngine *clone() const override { return new SymbolIconEngine(m_name); }

private:
    [[nodiscard]] static QColor color(QIcon::Mode mode)
    {
        const Theme &theme = Theme::current();
        return mode == QIcon::Disabled ? theme.tertiaryInk : theme.secondaryInk;
    }

    QString m_name;
};

} // namespace

QIcon symbolIcon(const QString &name)
{
    return QIcon(new SymbolIconEngine(name));
}

} // namespace wrenfold
