// kel_menucompiler: reads a menu file and writes it again as generated C++
// source (a class whose static instance registers a factory for the menu or
// menu bar under its name) or as XML, so that an application can ship its
// menus compiled in instead of as files.
//
//   kel_menucompiler [--source | --xml] [--name NAME] [-o OUTPUT] FILE
//
// The name (the generated class, and the name the menu is asked for by)
// defaults to the file name without its extension. Problems are reported as
// "FILE:LINE:COLUMN: error: ..." (or "warning: ..." for what the library
// would skip while reading the file).
//
// Exit status: 0 written, 1 the menu file is malformed, 2 bad usage or a file
// that cannot be read or written.
#include "Mnu_QtManager.h"
#include "Mnu_QtMenuBarManager.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QVector>
#include <QXmlStreamReader>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>

namespace {

const char kUsage[] =
    "usage: kel_menucompiler [--source | --xml] [--name NAME] [-o OUTPUT] FILE\n"
    "Reads the menu file FILE (root <Menu> or <MenuBar>) and writes it as C++ source\n"
    "that registers the menu under NAME (default: FILE's name without extension),\n"
    "or as XML, to OUTPUT (default: standard output).\n"
    "Exit status: 0 written, 1 malformed menu file, 2 usage or file error.\n";

struct Options
{
    bool xml = false;
    QString name;
    QString output;
    QString input;
};

// Problems found while walking the document, in document order.
class Reporter
{
public:
    explicit Reporter(const QString& file) : mFile(file) {}

    void error(int line, int column, const QString& message) { report("error", line, column, message); }
    void warning(int line, int column, const QString& message) { report("warning", line, column, message); }

private:
    void report(const char* kind, int line, int column, const QString& message)
    {
        std::fprintf(stderr, "%s:%d:%d: %s: %s\n", qPrintable(mFile), line, column, kind, message.toUtf8().constData());
    }

    QString mFile;
};

struct Position
{
    int line;
    int column;
};

// Where each element's start tag begins ("<"), in document order. Qt's DOM
// nodes know a position too, but not the same one in every Qt version.
QVector<Position> startTagPositions(const QByteArray& text)
{
    QVector<Position> positions;
    const QString decoded = QString::fromUtf8(text);
    QXmlStreamReader reader(text);
    int scanned = 0;   // characters counted into line and lineStart so far
    int line = 1;
    int lineStart = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        // The reader stands after the start tag; its "<" is the last one
        // before (attribute values cannot hold one).
        const int tag = decoded.lastIndexOf(QLatin1Char('<'), int(reader.characterOffset()) - 1);
        if (tag < scanned)
            continue;
        for (; scanned < tag; ++scanned) {
            if (decoded.at(scanned) == QLatin1Char('\n')) {
                ++line;
                lineStart = scanned + 1;
            }
        }
        positions.append(Position{line, tag - lineStart + 1});
    }
    return positions;
}

const QSet<QString>& commonTags()
{
    static const QSet<QString> tags{"Name",
                                    "Text",
                                    "TextConnectionName",
                                    "Accelerator",
                                    "AcceleratorConnectionName",
                                    "VisibleConnectionName",
                                    "EnableConnectionName",
                                    "Icon",
                                    "WhatsThisText",
                                    "WhatsThisConnectionName",
                                    "WhyDisabledConnectionName"};
    return tags;
}

// The children each segment element reads beyond the common ones.
QStringList ownTags(const QString& segment)
{
    if (segment == QLatin1String("CommandSegment"))
        return {"ActionScript"};
    if (segment == QLatin1String("BooleanSegment"))
        return {"BooleanConnectionName"};
    if (segment == QLatin1String("ListSegment"))
        return {"ItemsConnectionName"};
    if (segment == QLatin1String("RadioListSegment"))
        return {"ItemsConnectionName", "CurrentItemConnectionName"};
    if (segment == QLatin1String("RadioItemsSegment"))
        return {"CurrentItemConnectionName", "RadioItem"};
    if (segment == QLatin1String("SubMenuSegment"))
        return {"Menu"};
    return {};
}

bool isSegmentTag(const QString& tag)
{
    static const QSet<QString> tags{"CommandSegment",    "BooleanSegment", "ListSegment",   "RadioListSegment",
                                    "RadioItemsSegment", "Separator",      "SubMenuSegment"};
    return tags.contains(tag);
}

// Says what the library would pass over while reading, with the place in
// the file, where the library's own messages have none. Visits every
// element in document order, so that the n-th visit is the n-th start tag.
class Checker
{
public:
    enum Role { kMenuBar, kMenu, kSegment, kRadioItem, kValue };

    Checker(Reporter& reporter, const QVector<Position>& positions) : mReporter(reporter), mPositions(positions) {}

    void visit(const QDomElement& element, Role role, const QString& warning = QString())
    {
        const Position at = mPositions.value(mNext++, Position{0, 0});
        if (!warning.isEmpty())
            mReporter.warning(at.line, at.column, warning);
        bool text = false;
        bool id = false;
        for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
            const QString tag = child.tagName();
            switch (role) {
            case kMenuBar:
                if (tag == QLatin1String("Menu"))
                    visit(child, kMenu);
                else if (tag == QLatin1String("EditMenu")) // where the application's Edit menu goes
                    visit(child, kValue);
                else
                    visit(child, kValue,
                          QStringLiteral("<%1> in <MenuBar> is left out; only <Menu> and <EditMenu> are read").arg(tag));
                break;
            case kMenu:
                if (isSegmentTag(tag))
                    visit(child, kSegment);
                else if (tag == QLatin1String("Name") || tag == QLatin1String("Text")
                         || tag == QLatin1String("VisibleConnectionName") || tag == QLatin1String("TextConnectionName"))
                    visit(child, kValue);
                else
                    visit(child, kValue, QStringLiteral("unknown segment tag <%1> is left out").arg(tag));
                break;
            case kSegment: {
                const QStringList own = ownTags(element.tagName());
                if (tag == QLatin1String("Menu") && own.contains(tag))
                    visit(child, kMenu);
                else if (tag == QLatin1String("RadioItem") && own.contains(tag))
                    visit(child, kRadioItem);
                else if (own.contains(tag) || commonTags().contains(tag))
                    visit(child, kValue);
                else
                    visit(child, kValue,
                          QStringLiteral("<%1> is not read within <%2>").arg(tag, element.tagName()));
                break;
            }
            case kRadioItem:
                if (tag == QLatin1String("Text")) {
                    text = true;
                    visit(child, kValue);
                } else if (tag == QLatin1String("ID")) {
                    bool ok = false;
                    child.text().toInt(&ok, 10);
                    id = id || ok;
                    visit(child, kValue,
                          ok ? QString() : QStringLiteral("<ID> \"%1\" is not a decimal integer").arg(child.text()));
                } else {
                    visit(child, kValue, QStringLiteral("unknown tag <%1> within <RadioItem>").arg(tag));
                }
                break;
            case kValue:
                visit(child, kValue);
                break;
            }
        }
        if (role == kRadioItem && (!text || !id))
            mReporter.warning(at.line, at.column,
                              QStringLiteral("<RadioItem> without a <Text> and a valid <ID> is left out"));
    }

private:
    Reporter& mReporter;
    const QVector<Position>& mPositions;
    int mNext = 0;
};

// Comments and processing instructions carry nothing, but the library would
// take them for nameless tags: they go before the menu is read.
void removeNonElements(QDomNode node)
{
    for (QDomNode child = node.firstChild(); !child.isNull();) {
        QDomNode next = child.nextSibling();
        if (child.isComment() || child.isProcessingInstruction())
            node.removeChild(child);
        else if (child.isElement())
            removeNonElements(child);
        child = next;
    }
}

int parseArguments(const QStringList& args, Options* options)
{
    for (int i = 1; i < args.size(); ++i) {
        const QString& arg = args.at(i);
        if (arg == QLatin1String("-h") || arg == QLatin1String("--help")) {
            std::fputs(kUsage, stdout);
            return 0;
        }
        if (arg == QLatin1String("--xml")) {
            options->xml = true;
        } else if (arg == QLatin1String("--source")) {
            options->xml = false;
        } else if ((arg == QLatin1String("--name") || arg == QLatin1String("-o")) && i + 1 < args.size()) {
            (arg == QLatin1String("-o") ? options->output : options->name) = args.at(++i);
        } else if (arg.startsWith(QLatin1Char('-')) || !options->input.isEmpty()) {
            std::fputs(kUsage, stderr);
            return 2;
        } else {
            options->input = arg;
        }
    }
    if (options->input.isEmpty()) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    return -1;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // The library's own reading messages say less than the checks above.
    QLoggingCategory::setFilterRules(QStringLiteral("kel.*=false"));

    Options options;
    const int usage = parseArguments(app.arguments(), &options);
    if (usage >= 0)
        return usage;
    if (options.name.isEmpty())
        options.name = QFileInfo(options.input).completeBaseName();
    // The name becomes a C++ class name in the generated source.
    static const QRegularExpression identifier(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    if (!options.xml && !identifier.match(options.name).hasMatch()) {
        std::fprintf(stderr, "kel_menucompiler: \"%s\" is not a C++ identifier; give one with --name\n",
                     qPrintable(options.name));
        return 2;
    }

    QFile input(options.input);
    if (!input.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "kel_menucompiler: cannot read %s\n", qPrintable(options.input));
        return 2;
    }
    const QByteArray text = input.readAll();
    Reporter reporter(options.input);
    QDomDocument document;
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(text, false, &message, &line, &column)) {
        reporter.error(line, column, message);
        return 1;
    }
    removeNonElements(document);
    const QVector<Position> positions = startTagPositions(text);
    QDomElement root = document.documentElement();
    const bool isBar = root.tagName() == QLatin1String("MenuBar");
    if (!isBar && root.tagName() != QLatin1String("Menu")) {
        const Position at = positions.value(0, Position{0, 0});
        reporter.error(
            at.line, at.column,
            QStringLiteral("the root element is <%1>; a menu file has <Menu> or <MenuBar>").arg(root.tagName()));
        return 1;
    }
    Checker(reporter, positions).visit(root, isBar ? Checker::kMenuBar : Checker::kMenu);

    // Built without widgets: the writers need the menu model only.
    std::unique_ptr<Mnu_QtMenuBarManager> bar;
    std::unique_ptr<Mnu_QtManager> menu;
    if (isBar) {
        bar.reset(new Mnu_QtMenuBarManager(nullptr));
        for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
            if (child.tagName() == QLatin1String("Menu"))
                bar->addManager(new Mnu_QtManager(bar.get(), nullptr, &child));
            else if (child.tagName() == QLatin1String("EditMenu"))
                bar->addEditMenu();
        }
    } else {
        menu.reset(new Mnu_QtManager());
        menu->setMenus(&root);
    }

    std::ofstream file;
    if (!options.output.isEmpty()) {
        file.open(QFile::encodeName(options.output).constData(), std::ios::out | std::ios::trunc);
        if (!file) {
            std::fprintf(stderr, "kel_menucompiler: cannot write %s\n", qPrintable(options.output));
            return 2;
        }
    }
    std::ostream& out = options.output.isEmpty() ? std::cout : file;
    const Mnu_Segment::saveFormat format = options.xml ? Mnu_Segment::kSaveXml : Mnu_Segment::kSaveSource;
    if (bar)
        bar->saveMenuBar(out, options.name, format);
    else
        menu->savePopupMenu(out, options.name, format);
    out.flush();
    if (!out) {
        std::fprintf(stderr, "kel_menucompiler: cannot write %s\n", qPrintable(options.output));
        return 2;
    }
    return 0;
}
