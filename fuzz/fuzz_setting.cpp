// Fuzzes settings documents (the XML that fonts and other settings come
// from). Each input is read by a reader of its own under several start roots
// and prefixes, the way the font manager reads it ("Windows", "FontSettings")
// and with none; every parameter is listed and looked up by name, and the
// input is merged into a reader that already holds a valid document.
//
// No application object is needed: the reader is plain Qt Core.
#include "Ost_Setting.h"

#include <QString>
#include <QtGlobal>
#include <cstdint>

namespace {

void quietMessages(QtMsgType, const QMessageLogContext&, const QString&)
{
}

const char* const kBase = "<Settings><Windows><FontSettings><Kel_Header><Font>Arial,12</Font>"
                          "</Kel_Header></FontSettings></Windows></Settings>";

// Lists every parameter and asks for each by name: a listed name must be found.
void readAll(const Ost_Setting& settings)
{
    const int count = settings.GetParamCount();
    QString name;
    QString value;
    for (int n = 0; settings.GetNthParam(n, name, value); ++n) {
        QString again;
        if (!settings.GetParam(name, again) || n >= count)
            __builtin_trap();
    }
    settings.GetNthParam(-1, name, value);
    settings.GetNthParam(count, name, value);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler(&quietMessages);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString xml = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));

    Ost_Setting fonts;
    fonts.SetPrefix(QStringLiteral("FontSettings"));
    fonts.SetStartRoot(QStringLiteral("Windows"));
    fonts.SetXML(xml, false);
    readAll(fonts);

    // Start root and prefix changed after the text was read.
    fonts.SetStartRoot(QString());
    fonts.SetPrefix(QString());
    readAll(fonts);
    fonts.SetStartRoot(QStringLiteral("Mac"));
    readAll(fonts);

    Ost_Setting merged;
    merged.SetXML(QString::fromLatin1(kBase), false);
    merged.SetXML(xml, true);
    merged.SetXML(xml, true);
    merged.SetStartRoot(QStringLiteral("Windows"));
    readAll(merged);
    merged.SetXML(QString::fromLatin1(kBase), false);
    readAll(merged);
    return 0;
}
