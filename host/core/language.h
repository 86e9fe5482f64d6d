#pragma once

#include <QString>

class QObject;

namespace tarn {

enum class Language { Chinese, English };

} // namespace tarn

/// The program's language, and the texts that stand in the code as pairs.
class VLCMsgIniW {
public:
    static void set_language(tarn::Language language);
    static tarn::Language language();

    /// The one of the two texts that the program's language asks for.
    static QString switch_lang(const QString& chinese, const QString& english);

    /// A text of the shared message table by its number; empty when the table has none.
    static QString VLoadString(int number);
};

/// Translation of the captions of windows that were made from a template. Templates are written in Chinese.
class CTarnLanguageConvert {
public:
    /// Translates every caption (text, title, tool tip, place-holder, combo entries) of `window` and its children,
    /// looked up in the installed translations under the context `name`. In Chinese, and for a caption without a
    /// translation, the caption stays.
    static void init_dlg_language(QObject* window, const QString& name);
};

namespace tarn {

/// switch_lang() for literals: lang(u"中文", u"English").
inline QString lang(const char16_t* chinese, const char16_t* english)
{
    return VLCMsgIniW::language() == Language::Chinese ? QString::fromUtf16(chinese) : QString::fromUtf16(english);
}

} // namespace tarn
