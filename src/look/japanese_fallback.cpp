// SPDX-License-Identifier: MIT
#include "look/japanese_fallback.h"

#include <QFont>

#include <fontconfig/fontconfig.h>
#include <memory>

namespace wrenfold {
namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

const FcChar8 *fontconfigText(const char *text)
{
    return reinterpret_cast<const FcChar8 *>(text);
}

/// Empty where there is no font at all.
QString japaneseFamily()
{
    const Pattern wish(FcPatternCreate(), &FcPatternDestroy);
    FcPatternAddString(wish.get(), FC_FAMILY, fontconfigText("sans-serif"));
    FcPatternAddString(wish.get(), FC_LANG, fontconfigText("ja"));
    FcConfigSubstitute(nullptr, wish.get(), FcMatchPattern);
    FcDefaultSubstitute(wish.get());
    FcResult result = FcResultNoMatch;
    const Pattern font(FcFontMatch(nullptr, wish.get(), &result), &FcPatternDestroy);
    FcChar8 *family = nullptr;
    if (!font || FcPatternGetString(font.get(), FC_FAMILY, 0, &family) != FcResultMatch)
        return {};
    return QString::fromUtf8(reinterpret_cast<const char *>(family));
}

} // namespace

void preferJapaneseFallback(const QString &family)
{
    const QString japanese = japaneseFamily();
    if (!japanese.isEmpty() && japanese != family)
        QFont::insertSubstitution(family, japanese); // Once: the same one again is not taken.
}

} // namespace wrenfold
