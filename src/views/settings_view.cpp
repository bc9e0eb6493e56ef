// SPDX-License-Identifier: MIT
#include "views/settings_view.h"

#include "look/symbol_icon.h"
#include "look/theme.h"
#include "model/focus_store.h"
#include "views/application_chooser.h"
#include "views/automation_settings.h"
#include "views/focus_guard_settings.h"
#include "views/general_settings.h"
#include "views/integration_settings.h"

#include <QGuiApplication>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cstdlib>

namespace wrenfold {

SettingsView::SettingsView(FocusStore &store, Clock &clock, InstalledApplications &applications,
                           QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_applications(applications)
    , m_tabs(new QTabWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    m_tabs->setDocumentMode(true); // The pages fill the window.
    const auto add = [this](SettingsPage *page, const QString &symbol, const QString &label) {
        m_tabs->addTab(page, symbolIcon(symbol), label);
    };
    add(new GeneralSettings(store, clock), QStringLiteral("gearshape"), QStringLiteral("一般"));
    add(new IntegrationSettings(store), QStringLiteral("link"), QStringLiteral("連携"));
    add(new AutomationSettings(store), QStringLiteral("wand.and.stars"), QStringLiteral("自動化"));
    add(new FocusGuardSettings(store, [this] { chooseBlockedApp(); }), QStringLiteral("shield"),
        QStringLiteral("ガード"));
    // By shortcuts, as some controls keep these keys for themselves.
    addTabKeys(
        QKeySequence::keyBindings(QKeySequence::NextChild) << QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
    addTabKeys(QKeySequence::keyBindings(QKeySequence::PreviousChild)
                   << QKeySequence(Qt::CTRL | Qt::Key_PageUp),
               -1);
    applyTheme();
}

void SettingsView::addTabKeys(const QList<QKeySequence> &keys, int step)
{
    auto *shortcut = new QShortcut(this);
    shortcut->setKeys(keys);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, step] {
        m_tabs->setCurrentIndex((m_tabs->currentIndex() + step + m_tabs->count()) % m_tabs->count());
    });
}

void SettingsView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        applyTheme();
    QWidget::changeEvent(event);
}

/// Boxes and fields are told from a surface of nearly the same colour by faint edges only.
void SettingsView::applyTheme()
{
    constexpr int leastDistance = 12; // Of their lightness.
    const QPalette desktop = QGuiApplication::palette();
    const auto distance = [window = desktop.color(QPalette::Window)](const QColor &color) {
        return std::abs(color.lightness() - window.lightness());
    };
    QPalette colors;
    if (distance(desktop.color(QPalette::Base)) < leastDistance) {
        const QColor paper = Theme::current().background;
        const QColor raised = Theme::current().tagSurface(Theme::current().ink);
        colors.setColor(QPalette::Base, distance(paper) < distance(raised) ? raised : paper);
    }
    setPalette(colors);
}

void SettingsView::chooseBlockedApp()
{
    auto *chooser = new ApplicationChooser(m_applications, this);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    connect(chooser, &ApplicationChooser::chosen, this, [this](const QList<QUrl> &files) {
        for (const QUrl &file : files)
            m_store.addBlockedApp(file);
    });
    chooser->open();
}

} // namespace wrenfold
