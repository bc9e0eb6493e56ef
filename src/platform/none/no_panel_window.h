// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panel_window.h"

namespace wrenfold {

/// For a desktop that grants a window none of the panel's wishes. The flags still utter them.
class NoPanelWindow : public PanelWindow
{
public:
    [[nodiscard]] Availability availability() const override
    {
        return {Availability::Level::NotAvailable,
                QStringLiteral("This desktop does not let a program keep its window above others.")};
    }
    [[nodiscard]] Availability workspacesAvailability() const override
    {
        return {Availability::Level::NotAvailable,
                QStringLiteral("This desktop does not let a program put its window on every workspace.")};
    }
    [[nodiscard]] Qt::WindowFlags flags() const override
    {
        return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    }
    void watchTranslucency(std::function<void(bool)> listener) override
    {
        if (listener)
            listener(false);
    }
    void pin(QWindow & /*window*/, PanelLevel /*level*/) override {}
    void bringBack(QWindow & /*window*/) override {}
    void accompany(QWindow & /*window*/, CompanionKind /*kind*/) override {}
};

} // namespace wrenfold
