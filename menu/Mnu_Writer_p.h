#ifndef MNU_WRITER_P_H
#define MNU_WRITER_P_H

// Internal to KelCore; not installed.
//
// The few pieces the menu writers share: one output line, and the two
// element and call shapes that most lines of the two forms take.

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <ostream>

namespace Mnu_Writer {

// indent, line and a newline, in the local 8-bit encoding.
inline void emitLine(std::ostream& out, const QString& indent, const QString& line)
{
    out << indent.toLocal8Bit().constData() << line.toLocal8Bit().constData() << std::endl;
}

// "<tag>value</tag>", the value as it stands.
inline QString element(const QString& tag, const QString& value)
{
    return QLatin1Char('<') + tag + QLatin1Char('>') + value + QLatin1String("</") + tag + QLatin1Char('>');
}

// Texts are the only values written with their ampersands escaped.
inline QString escapedText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&amp;"));
}

// "object->setter( \"value\" );", the value as it stands.
inline QString setterCall(const QString& object, const QString& setter, const QString& value)
{
    return object + QLatin1String("->") + setter + QLatin1String("( \"") + value + QLatin1String("\" );");
}

// Writes "<tag>value</tag>" (XML) or the setter call (source) when value is not empty.
inline void emitField(std::ostream& out, const QString& indent, bool xml, const QString& tag, const QString& object,
                      const QString& setter, const QString& value)
{
    if (value.isEmpty())
        return;
    emitLine(out, indent, xml ? element(tag, value) : setterCall(object, setter, value));
}

// The parts in which the generated source of a pop-up menu and of a menu
// bar differ; name is the generated class.
struct GeneratedFile
{
    QString name;
    QStringList includes;     // header names, in order
    QString factoryDeclaration;
    QString registration;
    QString unregistration;
    QString factoryDefinition;
    std::function<void(const QString& indent)> body; // the menus' code
    QString returnLine;
};

// A source file whose static instance registers a factory for the menu under
// its name when the program starts.
inline void emitGeneratedFile(std::ostream& out, const GeneratedFile& file)
{
    const QString none;
    const QString tab = QStringLiteral("\t");
    const QString& n = file.name;
    emitLine(out, none, QStringLiteral("/*"));
    emitLine(out, none, QStringLiteral("\tGenerated code - DO NOT EDIT - all changes will be lost!"));
    emitLine(out, none, QLatin1String("\tFile: ") + n + QLatin1String(".cpp"));
    emitLine(out, none, QLatin1String("\tCreated: ") + QDateTime::currentDateTime().toString());
    emitLine(out, none, QStringLiteral("*/"));
    for (const QString& header : file.includes)
        emitLine(out, none, QLatin1String("#include \"") + header + QLatin1Char('"'));
    emitLine(out, none, none);
    emitLine(out, none, QLatin1String("/* Class definition for ") + n + QLatin1String(" */"));
    emitLine(out, none, QLatin1String("class ") + n);
    emitLine(out, none, QStringLiteral("{"));
    emitLine(out, none, QStringLiteral("public:"));
    emitLine(out, none, tab + n + QLatin1String("(void);"));
    emitLine(out, none, QLatin1String("\tvirtual ~") + n + QLatin1String("(void);"));
    emitLine(out, none, file.factoryDeclaration);
    emitLine(out, none, QStringLiteral("};"));
    emitLine(out, none, none);
    emitLine(out, none, QLatin1String("/* Constructor for ") + n + QLatin1String(" */"));
    emitLine(out, none, n + QLatin1String("::") + n + QLatin1String("(void)"));
    emitLine(out, none, QStringLiteral("{"));
    emitLine(out, none, file.registration);
    emitLine(out, none, QStringLiteral("}"));
    emitLine(out, none, none);
    emitLine(out, none, QLatin1String("/* Destructor for ") + n + QLatin1String(" */"));
    emitLine(out, none, n + QLatin1String("::~") + n + QLatin1String("(void)"));
    emitLine(out, none, QStringLiteral("{"));
    emitLine(out, none, file.unregistration);
    emitLine(out, none, QStringLiteral("}"));
    emitLine(out, none, none);
    emitLine(out, none, QLatin1String("/* Menu creation method for ") + n + QLatin1String(" */"));
    emitLine(out, none, file.factoryDefinition);
    emitLine(out, none, QStringLiteral("{"));
    file.body(tab);
    emitLine(out, none, file.returnLine);
    emitLine(out, none, QStringLiteral("}"));
    emitLine(out, none, none);
    emitLine(out, none, QStringLiteral("/* Create an instance in order to call constructor/registration code */"));
    emitLine(out, none, QLatin1String("static ") + n + QLatin1String(" menubar;"));
    emitLine(out, none, none);
}

} // namespace Mnu_Writer

#endif
