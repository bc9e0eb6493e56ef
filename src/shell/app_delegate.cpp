// SPDX-License-Identifier: MIT
#include "shell/app_delegate.h"

#include "app/debug_log.h"
#include "model/task_list.h"
#include "shell/companion_place.h"
#include "shell/desktop_report.h"

#include <QApplication>
#include <QDesktopServices>
#include <QScreen>

#include <chrono>

namespace wrenfold {

namespace {

/// How long the bus may take from its starting this program to its handing over what was asked.
constexpr std::chrono::seconds patienceForRequest(2);

} // namespace

AppDelegate::AppDelegate(Platform &platform, const StoreMaking &storeMaking)
    : m_platform(platform)
    , m_notifier(*platform.notificationCenter)
    , m_sorter(ServiceOrigin::fromEnvironment())
    , m_store({*platform.preferences, *platform.clock, m_notifier, *platform.sounds, m_sorter,
               *platform.folderWatch, *platform.loginItem},
              storeMaking.options)
{
    if (storeMaking.seed)
        storeMaking.seed(m_store);
    m_platform.desktopAppearance->follow([this](const Appearance &appearance) {
        m_look.follow({appearance.isDark, appearance.isHighContrast, appearance.isMotionReduced});
    });
}

AppDelegate::~AppDelegate()
{
    m_platform.desktopAppearance->follow({});
    m_platform.notificationCenter->onClick({});
    // What is still being edited is committed when the panel is hidden.
    if (m_panelController)
        m_panelController->panel().hide();
    // One more try for what the disk refused.
    if (m_store.hasUnsavedChanges())
        m_store.save();
}

void AppDelegate::applicationDidFinishLaunching(std::optional<Request> request)
{
    qCInfo(DebugLog::app).noquote() << QStringLiteral("launch accessory mode verbose=") +
                                           DebugLog::word(DebugLog::isVerbose());
    if (const std::optional<QString> error = ServiceOrigin::fromEnvironment().error)
        qCWarning(DebugLog::app).noquote() << *error;
    makeMenu();
    m_notifier.requestPermissionIfNeeded();
    m_platform.notificationCenter->onClick([this] { showPanel(); });
    makeHotKeys();
    makeStatusItem();
    qCInfo(DebugLog::ui) << "status bar ready";
    makeFocusGuard();
    m_reorderKeyController.emplace(m_store, *m_platform.modifierKeys);
    m_reorderKeyController->install();
    m_store.refreshLoginItemStatus();
    m_store.exitGhostMode();
    if (request)
        showPanel();
    else
        m_unheardRequest = m_platform.clock->after(patienceForRequest, [this] { showPanel(); });
    m_platform.singleInstance->listen([this](Request another) { return answer(another); });
    if (request == Request::NewTodo)
        m_store.requestTodoInput();

    const qsizetype open = openTopLevelTasks(m_store.tasks.value()).size();
    qCInfo(DebugLog::app).noquote() << QStringLiteral("ready open=") + QString::number(open) +
                                           QStringLiteral(" todayDone=") +
                                           QString::number(m_store.completedTodayCount());
}

void AppDelegate::makeMenu()
{
    m_appMenu.emplace(MenuActions{
        .onShowPanel = [this] { showPanel(); },
        .onShowSettings = [this] { showSettings(); },
        .onShowAIChat = [this] { showAIChat(); },
        .onHidePanel = [this] { hidePanel(); },
        .onUndo = [this] { m_store.undo(); },
        .onRedo = [this] { m_store.redo(); },
        .canUndo = [this] { return m_store.canUndo.value(); },
        .canRedo = [this] { return m_store.canRedo.value(); },
        .onQuit = [] { quit(); },
    });
}

void AppDelegate::makeHotKeys()
{
    m_hotKeys = registerHotKeys(*m_platform.globalShortcuts, {
                                                                 .togglePanel = [this] { togglePanel(); },
                                                                 .hidePanel = [this] { hidePanel(); },
                                                                 .newTodo = [this] { newTodo(); },
                                                             });
}

void AppDelegate::makeStatusItem()
{
    m_statusBarController.emplace(m_store, *m_platform.clock, *m_platform.statusItem,
                                  StatusBarController::Actions{
                                      .showPanel = [this] { showPanel(); },
                                      .showSettings = [this] { showSettings(); },
                                      .showAIChat = [this] { showAIChat(); },
                                      .hidePanel = [this] { hidePanel(); },
                                      .quit = [] { quit(); },
                                  });
}

void AppDelegate::makeFocusGuard()
{
    m_focusGuardController.emplace(m_store,
                                   FocusGuardController::Services{*m_platform.frontmostApplication,
                                                                  *m_platform.clock, *m_platform.sounds,
                                                                  m_notifier},
                                   FocusGuardController::Actions{.raisePanel = [this] { showPanelUnasked(); },
                                                                 .showPanel = [this] { showPanel(); }});
}

PanelController &AppDelegate::panelController()
{
    if (!m_panelController) {
        m_panelController.emplace(
            m_store, *m_platform.clock, *m_platform.panelWindow,
            PanelController::Actions{
                .showAppMenu = [this](const QPoint &position) { m_appMenu->popup(position); },
                .openSettings = [this] { showSettings(); },
                .openAIChat = [this] { showAIChat(); },
                .openLink = [](const QUrl &link) { QDesktopServices::openUrl(link); }});
        m_appMenu->addTo(m_panelController->panel());
    }
    return *m_panelController;
}

SettingsController &AppDelegate::settingsController()
{
    if (!m_settingsController)
        m_settingsController.emplace(
            m_store, *m_platform.clock, *m_platform.panelWindow, *m_platform.installedApplications,
            SettingsController::Actions{.windowMade = [this](QWidget &window) { prepareWindow(window); }});
    return *m_settingsController;
}

AIChatController &AppDelegate::aiChatController()
{
    if (!m_aiChatController) {
        m_aiChatController.emplace(m_store, *m_platform.panelWindow);
        prepareWindow(m_aiChatController->window());
    }
    return *m_aiChatController;
}

/// A window that has just been made opens beside the panel, even if that is hidden now.
void AppDelegate::prepareWindow(QWidget &window)
{
    m_appMenu->addTo(window);
    const FocusPanel &panel = panelController().panel();
    const QRect visibleFrame = panel.screen()->availableGeometry();
    const QSize size = (window.size() + windowFrame).boundedTo(visibleFrame.size());
    window.resize(size - windowFrame);
    window.move(besidePanel(size, visibleFrame, panel.geometry()).topLeft());
}

void AppDelegate::showPanel()
{
    m_store.exitGhostMode();
    panelController().showAndPin();
}

/// Who works in another program goes on there.
void AppDelegate::showPanelUnasked()
{
    // A panel in sight that comes to the front was clicked.
    if (!panelController().panel().isVisible())
        m_platform.frontmostApplication->keepInFront();
    panelController().showWithoutFocus();
}

void AppDelegate::togglePanel()
{
    m_store.exitGhostMode();
    if (panelController().panel().isInSight())
        hidePanel();
    else
        showPanel();
}

void AppDelegate::hidePanel()
{
    panelController().hide();
}

void AppDelegate::showSettings()
{
    settingsController().show();
}

void AppDelegate::showAIChat()
{
    aiChatController().show();
}

void AppDelegate::newTodo()
{
    showPanel();
    m_store.requestTodoInput();
}

QString AppDelegate::answer(Request request)
{
    m_unheardRequest.reset();
    switch (request) {
    case Request::ShowPanel:
        showPanel();
        break;
    case Request::TogglePanel:
        togglePanel();
        break;
    case Request::HidePanel:
        hidePanel();
        break;
    case Request::NewTodo:
        newTodo();
        break;
    case Request::DesktopReport:
        return desktopReport(m_platform);
    }
    return {};
}

void AppDelegate::quit()
{
    QApplication::exit(); // Not quit(): that asks the windows first, and the panel does not close.
}

} // namespace wrenfold
