// SPDX-License-Identifier: MIT
#include "platform/frontmost_application_contract.h"
#include "platform/installed_applications.h"
#include "platform/linux/wlroots_frontmost_application.h"
#include "support/sway.h"

#include <map>

namespace wrenfold {

namespace {

/// Real windows in a real sway.
class SwayDesktop final : public DesktopWithWindows
{
public:
    SwayDesktop()
        : m_frontmost(WlrootsFrontmostApplication::connectIfOffered(m_installed))
    {
        if (!m_frontmost)
            qFatal("sway does not tell of windows");
    }

    FrontmostApplication &frontmost() override { return *m_frontmost; }
    void bringToFront(const RunningApplication &program) override
    {
        const QString id = *program.bundleIdentifier;
        const QString appID = id.section(u'.', -1);
        if (m_windows.contains(id)) // To what is in the scratchpad this is "scratchpad show".
            sway::run(QStringLiteral("[app_id=\"^%1$\"] focus").arg(appID));
        else
            m_windows[id] = std::make_unique<sway::Window>(appID);
    }
    void close(const RunningApplication &program) override { m_windows.erase(*program.bundleIdentifier); }

private:
    InstalledApplications m_installed;
    const std::unique_ptr<WlrootsFrontmostApplication> m_frontmost;
    std::map<QString, std::unique_ptr<sway::Window>> m_windows;
};

} // namespace

/// Runs in a sway session, see with_sway.sh.
class WlrootsFrontmostContractTest : public FrontmostApplicationContract
{
    Q_OBJECT

protected:
    [[nodiscard]] std::unique_ptr<DesktopWithWindows> makeDesktop() override
    {
        return std::make_unique<SwayDesktop>();
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::WlrootsFrontmostContractTest)
#include "moc_frontmost_application_contract.cpp"
#include "wlroots_frontmost_contract_test.moc"
