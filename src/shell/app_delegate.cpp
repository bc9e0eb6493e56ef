// SPDX-License-Identifier: MIT
#include "shell/app_delegate.h"

#include "app/debug_log.h"

#include <QApplication>
#include <QDesktopServices>

namespace wrenfold {

AppDelegate::AppDelegate(Platform &platform)
    : m_platform(platform)
    , m_notifier(*platform.notificationCenter)
    , m_sorter(ServiceOrigin::fromEnvironment())
    , m_store({*platform.preferences, *platform.clock, m_notifier, *platform.sounds, m_sorter,
               *platform.folderWatch},
              {})
    , m_appMenu({
          .hidePanel = [this] { m_panelController.hide(); },
          .undo = [this] { m_store.undo(); },
          .redo = [this] { m_store.redo(); },
          // Not quit(): that asks the windows first, and the panel does not close.
          .quit = [] { QApplication::exit(); },
          .canUndo = [this] { return m_store.canUndo.value(); },
          .canRedo = [this] { return m_store.canRedo.value(); },
      })
    , m_panelController(m_store, *platform.clock, *platform.panelWindow,
                        {.showAppMenu = [this](const QPoint &position) { m_appMenu.popup(position); },
                         .openLink = [](const QUrl &link) { QDesktopServices::openUrl(link); }})
{
    m_platform.desktopAppearance->follow([this](const Appearance &appearance) {
        m_look.follow({appearance.isDark, appearance.isHighContrast, appearance.isMotionReduced});
    });
    m_appMenu.addTo(m_panelController.panel());
}

AppDelegate::~AppDelegate()
{
    m_platform.desktopAppearance->follow({});
    m_platform.notificationCenter->onClick({});
    // A field that is still open commits when the focus leaves it.
    if (QWidget *focused = m_panelController.panel().focusWidget())
        focused->clearFocus();
    // One more try for what the disk refused.
    if (m_store.hasUnsavedChanges())
        m_store.save();
}

void AppDelegate::applicationDidFinishLaunching()
{
    if (const std::optional<QString> error = ServiceOrigin::fromEnvironment().error)
        qCWarning(DebugLog::app).noquote() << *error;
    m_notifier.requestPermissionIfNeeded();
    m_platform.notificationCenter->onClick([this] { showPanel(); });
    m_focusGuardController.emplace(
        m_store,
        FocusGuardController::Services{*m_platform.frontmostApplication, *m_platform.clock,
                                       *m_platform.sounds, m_notifier},
        FocusGuardController::Actions{[this] {
                                          // A panel in sight that comes to the front was clicked.
                                          if (!m_panelController.panel().isVisible())
                                              m_platform.frontmostApplication->keepInFront();
                                          m_panelController.showWithoutFocus();
                                      },
                                      [this] { showPanel(); }});
    m_reorderKeyController.emplace(m_store, *m_platform.modifierKeys);
    m_reorderKeyController->install();
    showPanel();
    m_platform.singleInstance->listen([this] { showPanel(); });
}

void AppDelegate::showPanel()
{
    m_panelController.showAndPin();
}

} // namespace wrenfold
