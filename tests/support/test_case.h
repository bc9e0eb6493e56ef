// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>
#include <QTest>

namespace wrenfold {

/// Base of every test class: a Qt warning that the test did not announce with QTest::ignoreMessage fails it. The user's
/// data folder is one of the test's own, empty at first.
class TestCase : public QObject
{
    Q_OBJECT

public:
    TestCase();

protected:
    [[nodiscard]] QString dataHome() const { return m_dataHome.path(); }

protected Q_SLOTS:
    void init();

private:
    QTemporaryDir m_dataHome;
};

} // namespace wrenfold
