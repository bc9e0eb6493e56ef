// SPDX-License-Identifier: MIT
#include "support/test_case.h"

#include <QRegularExpression>

namespace wrenfold {

TestCase::TestCase()
{
    qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8());
}

void TestCase::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".?")));
}

} // namespace wrenfold
