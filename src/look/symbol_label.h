// SPDX-License-Identifier: MIT
#pragma once

#include "look/theme.h"

#include <QWidget>

namespace wrenfold {

/// A symbol beside a text that says the same. Nothing to assistive technology.
class SymbolLabel : public QWidget
{
    Q_OBJECT

public:
    /// One of the names that Symbols knows.
    explicit SymbolLabel(const QString &symbol, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {Metrics::symbolSize, Metrics::symbolSize}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
};

} // namespace wrenfold
