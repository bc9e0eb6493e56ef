// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstdio>

namespace wrenfold {

/// Writes the text out at once. False if a part of it could not be written.
bool print(std::FILE *stream, const QByteArray &text);

} // namespace wrenfold
