// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace wrenfold {

/// JSON written with ' for ", which reads better in a test.
[[nodiscard]] inline QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

} // namespace wrenfold
