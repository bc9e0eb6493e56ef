// SPDX-License-Identifier: MIT
#include "look/symbol_label.h"

#include "look/painting.h"

#include <QPainter>

namespace wrenfold {

SymbolLabel::SymbolLabel(const QString &symbol, QWidget *parent)
    : QWidget(parent)
    , m_symbol(symbol)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Painting::symbol(painter, rect(), m_symbol, Theme::current().ink);
}

} // namespace wrenfold
