// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

namespace wrenfold {

/// Base of every test class: a Qt warning that the test did not announce with QTest::ignoreMessage fails it.
class TestCase : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
};

} // namespace wrenfold
