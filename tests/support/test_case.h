// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>
#include <QTest>

// The QTRY macros of newer versions of Qt narrow their time limit to an int, in the code of whoever uses them.
#pragma GCC diagnostic ignored "-Wconversion"

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
