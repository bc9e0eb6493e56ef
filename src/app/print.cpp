// SPDX-License-Identifier: MIT
#include "app/print.h"

namespace wrenfold {

bool print(std::FILE *stream, const QByteArray &text)
{
    const std::size_t written = std::fwrite(text.constData(), 1, std::size_t(text.size()), stream);
    return std::fflush(stream) == 0 && written == std::size_t(text.size());
}

} // namespace wrenfold
