// SPDX-License-Identifier: MIT
#include "platform/frontmost_application_contract.h"
#include "platform/installed_applications.h"
#include "platform/linux/kwin_frontmost_application.h"
#include "platform/linux/kwin_script_text.h"
#include "support/fake_kwin.h"
#include "support/private_bus.h"

#include <QStringList>

namespace wrenfold {

namespace {

const auto reporter = QStringLiteral("dev.tolvane.Wrenfold.ActiveWindow");
const auto minimizer = QStringLiteral("dev.tolvane.Wrenfold.MinimizeWindows");

QString classOf(const RunningApplication &program)
{
    return program.bundleIdentifier->section(u'.', -1);
}

/// KWin with windows as a stack, doing for both scripts what they would do in the real one.
class KWinDesktop final : public DesktopWithWindows
{
public:
    explicit KWinDesktop(const QString &busAddress)
        : m_kwin(busAddress)
    {
        QObject::connect(&m_kwin, &FakeKWin::started, &m_kwin, [this] { runScripts(); });
        if (!m_kwin.arrive())
            QTest::qFail("The bus does not take KWin.", __FILE__, __LINE__);
    }

    FrontmostApplication &frontmost() override { return m_frontmost; }
    void bringToFront(const RunningApplication &program) override
    {
        m_windows.removeAll(classOf(program));
        m_windows.append(classOf(program));
        reportActiveWindow();
    }
    void close(const RunningApplication &program) override
    {
        m_windows.removeAll(classOf(program));
        reportActiveWindow();
    }

private:
    [[nodiscard]] bool runs(const QString &script) const { return !m_kwin.running(script).text.isEmpty(); }

    void runScripts()
    {
        if (runs(minimizer)) {
            const QByteArray text = m_kwin.running(minimizer).text;
            m_windows.removeIf([&text](const QString &window) {
                return text.contains('[' + javaScriptString(window) + ", ");
            });
            m_kwin.reportMinimized();
        }
        reportActiveWindow();
    }

    void reportActiveWindow()
    {
        if (runs(reporter))
            m_kwin.report(m_windows.isEmpty() ? QString() : m_windows.last());
    }

    FakeKWin m_kwin;
    InstalledApplications m_installed;
    KWinFrontmostApplication m_frontmost{m_installed};
    QStringList m_windows; ///< What those in sight call themselves, the active one last.
};

} // namespace

class KWinFrontmostContractTest : public FrontmostApplicationContract
{
    Q_OBJECT

public:
    KWinFrontmostContractTest()
    {
        if (const QString error = m_bus.start(); !error.isEmpty())
            qFatal("%s", qPrintable(error));
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        qputenv("XDG_RUNTIME_DIR", m_runtimeFolder.path().toUtf8());
    }

protected:
    [[nodiscard]] std::unique_ptr<DesktopWithWindows> makeDesktop() override
    {
        return std::make_unique<KWinDesktop>(m_bus.address());
    }

private:
    QTemporaryDir m_runtimeFolder;
    PrivateBus m_bus;
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::KWinFrontmostContractTest)
#include "kwin_frontmost_contract_test.moc"
#include "moc_frontmost_application_contract.cpp"
