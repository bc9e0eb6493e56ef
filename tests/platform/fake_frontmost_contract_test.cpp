// SPDX-License-Identifier: MIT
#include "platform/frontmost_application_contract.h"
#include "support/fake_frontmost_application.h"

#include <QList>

namespace wrenfold {

namespace {

/// The windows as a stack, the fake showing the top one.
class FakeDesktop final : public DesktopWithWindows
{
public:
    FrontmostApplication &frontmost() override { return m_frontmost; }
    void bringToFront(const RunningApplication &program) override
    {
        m_windows.removeAll(program);
        m_windows.append(program);
        m_frontmost.setCurrent(program);
    }
    void close(const RunningApplication &program) override
    {
        m_windows.removeAll(program);
        m_frontmost.setCurrent(m_windows.isEmpty() ? std::nullopt : std::optional(m_windows.last()));
    }

private:
    FakeFrontmostApplication m_frontmost;
    QList<RunningApplication> m_windows;
};

} // namespace

class FakeFrontmostContractTest : public FrontmostApplicationContract
{
    Q_OBJECT

protected:
    [[nodiscard]] std::unique_ptr<DesktopWithWindows> makeDesktop() override
    {
        return std::make_unique<FakeDesktop>();
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FakeFrontmostContractTest)
#include "fake_frontmost_contract_test.moc"
#include "moc_frontmost_application_contract.cpp"
