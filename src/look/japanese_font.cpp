// SPDX-License-Identifier: MIT
#include "look/japanese_font.h"

#include <fontconfig/fontconfig.h>
#include <memory>

namespace wrenfold {
namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

const FcChar8 *fontconfigText(const char *text)
{
    return reinterpret_cast<const FcChar8 *>(text);
}

/// The family that the system takes for Japanese where `wished` is asked for. Empty where there is no font at all.
QString japaneseFamily(const QString &wished)
{
    const Pattern wish(FcPatternCreate(), &FcPatternDestroy);
    FcPatternAddString(wish.get(), FC_FAMILY, fontconfigText(wished.toUtf8().constData()));
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

bool isSameFamily(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

QFont fontForJapanese(const QFont &desktops)
{
    QFont font = desktops;
    const QString family = desktops.family();
    const QString taken = japaneseFamily(family);
    if (!taken.isEmpty() && !isSameFamily(taken, family)) {
        font.setFamily(taken);
        return font;
    }
    const QString japanese = japaneseFamily(QStringLiteral("sans-serif"));
    if (!japanese.isEmpty() && !isSameFamily(japanese, family))
        QFont::insertSubstitution(family, japanese); // Once: the same one again is not taken.
    return font;
}

void readFontConfiguration()
{
    FcInit();
}

} // namespace wrenfold
