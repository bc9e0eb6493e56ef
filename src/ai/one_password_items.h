// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

namespace wrenfold {

/// What 1Password's command-line tool is asked for, and how its answers are read.
namespace OnePasswordItems {

/// The places where a key is looked for first, in this order.
[[nodiscard]] QStringList secretReferences();

/// The identifiers of the items called after the AI service, from the JSON of `op item list`; none if it is no such JSON.
[[nodiscard]] QStringList candidates(const QByteArray &itemList);

/// The first filled-in field of an item that looks like a key, trimmed, from the JSON of `op item get`; empty if there is
/// none.
[[nodiscard]] QString keyIn(const QByteArray &item);

} // namespace OnePasswordItems

} // namespace wrenfold
