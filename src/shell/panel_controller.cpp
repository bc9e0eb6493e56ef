// SPDX-License-Identifier: MIT
#include "shell/panel_controller.h"

#include "app/debug_log.h"
#include "model/focus_store.h"
#include "shell/panel_geometry.h"
#include "views/focus_panel_view.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace wrenfold {

PanelController::PanelController(FocusStore &store, Clock &clock, PanelWindow &ability,
                                 const Actions &actions)
    : m_store(store)
    , m_clock(clock)
    , m_ability(ability)
    , m_panel(ability)
    , m_view(new FocusPanelView(store, clock,
                                {.hide = [this] { hide(); },
                                 .focusInput = [this] { m_panel.comeToFront(); },
                                 .showAppMenu = actions.showAppMenu,
                                 .openLink = actions.openLink,
                                 .openSettings = actions.openSettings,
                                 .openAIChat = actions.openAIChat}))
{
    m_panel.setContent(m_view);
    m_view->setFocus(); // Not a field: from here the Tab key starts.
    m_ability.watchTranslucency([this](bool isTranslucent) {
        m_panel.setTranslucent(isTranslucent);
        m_view->setRoundedByPainting(isTranslucent);
    });
    centreOnScreen();
    followScreens();
    const auto size = [this](bool) { followSize(); };
    m_subscriptions.push_back(m_store.isTodoListHidden.onChange(size));
    m_subscriptions.push_back(m_store.isQuadrantBoardVisible.onChange(size));
    m_subscriptions.push_back(m_store.isQuadrantDropActive.onChange(size));
    m_subscriptions.push_back(m_store.isGhostMode.watch([this](bool) { followGhostMode(); }));
    m_subscriptions.push_back(m_store.isHardPinned.watch([this](bool) {
        const auto apply = [this] { applyLevel(); };
        QMetaObject::invokeMethod(&m_panel, apply, Qt::QueuedConnection);
    }));
    followSize();
}

PanelController::~PanelController()
{
    m_ability.watchTranslucency({});
}

void PanelController::followSize()
{
    resizePanel(m_store.isTodoListHidden.value(),
                m_store.isQuadrantBoardVisible.value() || m_store.isQuadrantDropActive.value());
}

void PanelController::followGhostMode()
{
    m_panel.setClickThrough(m_store.isGhostMode.value());
}

void PanelController::applyLevel()
{
    m_panel.setLevel(m_store.isHardPinned.value() ? PanelLevel::AboveFullScreen : PanelLevel::Floating);
}

void PanelController::resizePanel(bool isListHidden, bool isQuadrantBoardPresented)
{
    std::optional<QRect> visibleFrame;
    if (const QScreen *screen = m_panel.screen())
        visibleFrame = screen->availableGeometry();
    const PanelGeometry resized = resizedPanel({m_panel.geometry(), m_compactOriginX, m_isBoardLeftOfList},
                                               visibleFrame, isListHidden, isQuadrantBoardPresented);
    m_compactOriginX = resized.compactOriginX;
    m_isBoardLeftOfList = resized.isBoardLeftOfList;
    m_view->setBoardLeftOfList(m_isBoardLeftOfList);
    m_panel.setGeometry(resized.frame);
}

void PanelController::centreOnScreen()
{
    QRect frame = m_panel.frameGeometry();
    frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    m_panel.move(frame.topLeft());
}

void PanelController::followScreens()
{
    const auto keepSoon = [this] { keepInSightSoon(); };
    const auto follow = [this, keepSoon](QScreen *screen) {
        QObject::connect(screen, &QScreen::availableGeometryChanged, &m_panel, keepSoon);
    };
    const QList<QScreen *> screens = QGuiApplication::screens();
    std::for_each(screens.begin(), screens.end(), follow);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_panel, follow);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_panel, keepSoon);
}

void PanelController::keepInSightSoon()
{
    // Not at once: a screen that is removed is still there, and while a window manager takes the panel into a frame of
    // its own, as at login together with the desktop's bars, the window's place is said to be the corner of the screen.
    constexpr auto settled = std::chrono::milliseconds(200);
    m_keepingInSight = m_clock.after(settled, [this] { keepInSight(); });
}

void PanelController::keepInSight()
{
    QList<QRect> visibleFrames;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        visibleFrames.append(screen->availableGeometry());
    const QRect kept = keptInSight(visibleFrames, m_panel.geometry());
    m_panel.setGeometry(kept);
    // At another scale the window system keeps the size that the window has in its own pixels.
    if (QWindow *window = m_panel.windowHandle())
        window->setGeometry(kept);
}

void PanelController::showAndPin()
{
    m_store.exitGhostMode();
    applyLevel();
    m_panel.comeToFront();
    logShown();
}

void PanelController::showWithoutFocus()
{
    m_store.exitGhostMode();
    m_panel.showWithoutFocus();
    logShown();
}

void PanelController::logShown() const
{
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::ui).noquote()
            << QStringLiteral("panel shown hardPin=") + DebugLog::word(m_store.isHardPinned.value());
}

void PanelController::hide()
{
    m_panel.hide();
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::ui) << "panel hidden";
}

} // namespace wrenfold
