// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUuid>

#include <optional>

namespace wrenfold {

/// The identifier as text: 36 characters, hyphenated, upper case.
[[nodiscard]] QString uuidText(const QUuid &id);

/// The identifier that a 36-character hyphenated text (any letter case) names; none for any other text.
[[nodiscard]] std::optional<QUuid> uuidFromText(QStringView text);

} // namespace wrenfold
