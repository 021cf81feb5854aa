#include "Kel_KeyboardLanguage.h"

#include <QGuiApplication>
#include <QInputMethod>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

// Windows primary language identifiers (the LANG_xxx values of the Windows
// headers), their English names and the Qt language of each. Numbers the
// Windows headers leave unassigned are absent; 9 (English) is left out on
// purpose: it never names a language variant.
struct LanguageEntry
{
    int number;
    const char* name;
    QLocale::Language language;
};

const LanguageEntry kLanguages[] = {
    {0x01, "Arabic", QLocale::Arabic},
    {0x02, "Bulgarian", QLocale::Bulgarian},
    {0x03, "Catalan", QLocale::Catalan},
    {0x04, "Chinese", QLocale::Chinese},
    {0x05, "Czech", QLocale::Czech},
    {0x06, "Danish", QLocale::Danish},
    {0x07, "German", QLocale::German},
    {0x08, "Greek", QLocale::Greek},
    {0x0a, "Spanish", QLocale::Spanish},
    {0x0b, "Finnish", QLocale::Finnish},
    {0x0c, "French", QLocale::French},
    {0x0d, "Hebrew", QLocale::Hebrew},
    {0x0e, "Hungarian", QLocale::Hungarian},
    {0x0f, "Icelandic", QLocale::Icelandic},
    {0x10, "Italian", QLocale::Italian},
    {0x11, "Japanese", QLocale::Japanese},
    {0x12, "Korean", QLocale::Korean},
    {0x13, "Dutch", QLocale::Dutch},
    {0x14, "Norwegian", QLocale::NorwegianBokmal},
    {0x15, "Polish", QLocale::Polish},
    {0x16, "Portuguese", QLocale::Portuguese},
    {0x17, "Romansh", QLocale::Romansh},
    {0x18, "Romanian", QLocale::Romanian},
    {0x19, "Russian", QLocale::Russian},
    {0x1a, "Croatian", QLocale::Croatian},
    {0x1b, "Slovak", QLocale::Slovak},
    {0x1c, "Albanian", QLocale::Albanian},
    {0x1d, "Swedish", QLocale::Swedish},
    {0x1e, "Thai", QLocale::Thai},
    {0x1f, "Turkish", QLocale::Turkish},
    {0x20, "Urdu", QLocale::Urdu},
    {0x21, "Indonesian", QLocale::Indonesian},
    {0x22, "Ukrainian", QLocale::Ukrainian},
    {0x23, "Belarusian", QLocale::Belarusian},
    {0x24, "Slovenian", QLocale::Slovenian},
    {0x25, "Estonian", QLocale::Estonian},
    {0x26, "Latvian", QLocale::Latvian},
    {0x27, "Lithuanian", QLocale::Lithuanian},
    {0x28, "Tajik", QLocale::Tajik},
    {0x29, "Persian", QLocale::Persian},
    {0x2a, "Vietnamese", QLocale::Vietnamese},
    {0x2b, "Armenian", QLocale::Armenian},
    {0x2c, "Azerbaijani", QLocale::Azerbaijani},
    {0x2d, "Basque", QLocale::Basque},
    {0x2e, "Upper Sorbian", QLocale::UpperSorbian},
    {0x2f, "Macedonian", QLocale::Macedonian},
    {0x32, "Tswana", QLocale::Tswana},
    {0x34, "Xhosa", QLocale::Xhosa},
    {0x35, "Zulu", QLocale::Zulu},
    {0x36, "Afrikaans", QLocale::Afrikaans},
    {0x37, "Georgian", QLocale::Georgian},
    {0x38, "Faroese", QLocale::Faroese},
    {0x39, "Hindi", QLocale::Hindi},
    {0x3a, "Maltese", QLocale::Maltese},
    {0x3b, "Sami", QLocale::NorthernSami},
    {0x3c, "Irish", QLocale::Irish},
    {0x3e, "Malay", QLocale::Malay},
    {0x3f, "Kazakh", QLocale::Kazakh},
    {0x40, "Kyrgyz", QLocale::Kirghiz},
    {0x41, "Swahili", QLocale::Swahili},
    {0x42, "Turkmen", QLocale::Turkmen},
    {0x43, "Uzbek", QLocale::Uzbek},
    {0x44, "Tatar", QLocale::Tatar},
    {0x45, "Bengali", QLocale::Bengali},
    {0x46, "Punjabi", QLocale::Punjabi},
    {0x47, "Gujarati", QLocale::Gujarati},
    {0x48, "Odia", QLocale::Oriya},
    {0x49, "Tamil", QLocale::Tamil},
    {0x4a, "Telugu", QLocale::Telugu},
    {0x4b, "Kannada", QLocale::Kannada},
    {0x4c, "Malayalam", QLocale::Malayalam},
    {0x4d, "Assamese", QLocale::Assamese},
    {0x4e, "Marathi", QLocale::Marathi},
    {0x4f, "Sanskrit", QLocale::Sanskrit},
    {0x50, "Mongolian", QLocale::Mongolian},
    {0x51, "Tibetan", QLocale::Tibetan},
    {0x52, "Welsh", QLocale::Welsh},
    {0x53, "Khmer", QLocale::Khmer},
    {0x54, "Lao", QLocale::Lao},
    {0x56, "Galician", QLocale::Galician},
    {0x57, "Konkani", QLocale::Konkani},
    {0x58, "Manipuri", QLocale::Manipuri},
    {0x59, "Sindhi", QLocale::Sindhi},
    {0x5a, "Syriac", QLocale::Syriac},
    {0x5b, "Sinhala", QLocale::Sinhala},
    {0x5c, "Cherokee", QLocale::Cherokee},
    {0x5d, "Inuktitut", QLocale::Inuktitut},
    {0x5e, "Amharic", QLocale::Amharic},
    {0x5f, "Tamazight", QLocale::CentralMoroccoTamazight},
    {0x60, "Kashmiri", QLocale::Kashmiri},
    {0x61, "Nepali", QLocale::Nepali},
    {0x62, "Frisian", QLocale::WesternFrisian},
    {0x63, "Pashto", QLocale::Pashto},
    {0x64, "Filipino", QLocale::Filipino},
    {0x65, "Divehi", QLocale::Divehi},
    {0x67, "Fulah", QLocale::Fulah},
    {0x68, "Hausa", QLocale::Hausa},
    {0x6a, "Yoruba", QLocale::Yoruba},
    {0x6b, "Quechua", QLocale::Quechua},
    {0x6c, "Sotho", QLocale::NorthernSotho},
    {0x6d, "Bashkir", QLocale::Bashkir},
    {0x6e, "Luxembourgish", QLocale::Luxembourgish},
    {0x6f, "Greenlandic", QLocale::Greenlandic},
    {0x70, "Igbo", QLocale::Igbo},
    {0x73, "Tigrinya", QLocale::Tigrinya},
    {0x78, "Yi", QLocale::SichuanYi},
    {0x7a, "Mapudungun", QLocale::Mapuche},
    {0x7c, "Mohawk", QLocale::Mohawk},
    {0x7e, "Breton", QLocale::Breton},
};

// Qt languages that Windows files under another language's number.
struct LanguageAlias
{
    QLocale::Language language;
    int number;
};

const LanguageAlias kAliases[] = {
    {QLocale::NorwegianNynorsk, 0x14}, {QLocale::Serbian, 0x1a},      {QLocale::Bosnian, 0x1a},
    {QLocale::LowerSorbian, 0x2e},     {QLocale::English, 0x09},
};

int gOverride = -1;

} // namespace

int Kel_KeyboardLanguage::currentLanguage()
{
    if (gOverride >= 0)
        return gOverride;
#ifdef Q_OS_WIN
    // The low word of the layout handle is the layout's language identifier;
    // its low 8 bits are the primary language.
    return int(reinterpret_cast<quintptr>(GetKeyboardLayout(0)) & 0xff);
#else
    const QInputMethod* input = qobject_cast<QGuiApplication*>(QCoreApplication::instance())
                                    ? QGuiApplication::inputMethod()
                                    : nullptr;
    return languageOfLocale(input ? input->locale() : QLocale::system());
#endif
}

void Kel_KeyboardLanguage::setCurrentLanguageOverride(int lang)
{
    gOverride = lang < 0 ? -1 : lang;
}

int Kel_KeyboardLanguage::currentLanguageOverride()
{
    return gOverride;
}

QMap<QString, int> Kel_KeyboardLanguage::languageNames()
{
    QMap<QString, int> names;
#ifdef Q_OS_WIN
    for (int number = 1; number <= 126; ++number) {
        if (number == 9)
            continue;
        const LCID id = LCID(number | 0x400); // the language's default sublanguage
        if (!IsValidLocale(id, LCID_SUPPORTED))
            continue;
        char buffer[256];
        if (GetLocaleInfoA(id, LOCALE_SENGLANGUAGE, buffer, int(sizeof buffer)) > 0)
            names.insert(QString::fromLocal8Bit(buffer), number);
    }
#else
    for (const LanguageEntry& entry : kLanguages)
        names.insert(QString::fromLatin1(entry.name), entry.number);
#endif
    return names;
}

int Kel_KeyboardLanguage::languageOfLocale(const QLocale& locale)
{
    const QLocale::Language language = locale.language();
    for (const LanguageEntry& entry : kLanguages) {
        if (entry.language == language)
            return entry.number;
    }
    for (const LanguageAlias& alias : kAliases) {
        if (alias.language == language)
            return alias.number;
    }
    return 0;
}
