// SPDX-License-Identifier: MIT
#include "support/test_case.h"

#include <QRegularExpression>

namespace wrenfold {

void TestCase::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".?")));
}

} // namespace wrenfold
