// SPDX-License-Identifier: MIT
#pragma once

#include "support/private_bus.h"
#include "support/test_case.h"

#include <memory>

namespace wrenfold {

/// Base of a suite that runs once over a fake and once over what does the same over a bus. The bus and the
/// runtime folder are the test's own.
class BusContractTest : public TestCase
{
    Q_OBJECT

protected:
    /// The one whose turn it is. A `Real` is made with the bus's address.
    template<typename Subject, typename Fake, typename Real>
    [[nodiscard]] std::unique_ptr<Subject> makeOneOf() const
    {
        QFETCH_GLOBAL(bool, isReal);
        if (isReal)
            return std::make_unique<Real>(m_bus.address());
        return std::make_unique<Fake>();
    }

protected Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("isReal");
        QTest::newRow("fake") << false;
        QTest::newRow("real") << true;
    }

    void initTestCase()
    {
        QCOMPARE(m_bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        qputenv("XDG_RUNTIME_DIR", dataHome().toUtf8());
    }

private:
    PrivateBus m_bus;
};

} // namespace wrenfold
