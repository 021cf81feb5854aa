#include "Mnu_Manager.h"

#include "Kel_Logging_p.h"
#include "Mnu_Menu.h"
#include "Ost_Resource.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstring>

namespace {

// Qt's DOM parser recurses once per element level and runs out of stack a
// few thousand levels down (sooner on Windows' 1 MB main-thread stack). No
// menu file comes anywhere near this depth.
const int kMaxElementDepth = 1000;

// Opens file read-only; a device or pipe is refused, since reading it to
// its end might never finish.
bool openMenuFile(QFile& file)
{
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly))
        return false;
    if (file.isSequential()) {
        file.close();
        return false;
    }
    return true;
}

// How deeply the elements of data nest at most, found by a byte scan far
// cheaper than the stream reader below; a self-closing element counts one
// level below its parent, as the reader sees it. -1 when the scan cannot
// vouch for the text: a document type (its entities may hold elements), a
// NUL byte (a wide encoding), or markup left unclosed.
int nestingBound(const QByteArray& data)
{
    if (data.contains('\0'))
        return -1;
    const char* p = data.constData();
    const char* const end = p + data.size();
    auto skipPast = [&p, end](const char* closing, int length) {
        const char* found = std::search(p, end, closing, closing + length);
        if (found == end)
            return false;
        p = found + length;
        return true;
    };
    int depth = 0;
    int deepest = 0;
    while ((p = static_cast<const char*>(std::memchr(p, '<', size_t(end - p))))) {
        ++p;
        if (p == end)
            return -1;
        if (*p == '/') {
            --depth;
            if (!skipPast(">", 1))
                return -1;
        } else if (*p == '?') {
            if (!skipPast("?>", 2))
                return -1;
        } else if (*p == '!') {
            const bool closed = (end - p >= 3 && std::memcmp(p, "!--", 3) == 0 && (p += 3, skipPast("-->", 3)))
                || (end - p >= 8 && std::memcmp(p, "![CDATA[", 8) == 0 && (p += 8, skipPast("]]>", 3)));
            if (!closed)
                return -1;
        } else {
            deepest = std::max(deepest, ++depth);
            char quote = 0;
            for (; p != end && (quote || *p != '>'); ++p) {
                if (quote ? *p == quote : (*p == '"' || *p == '\''))
                    quote = quote ? 0 : *p;
            }
            if (p == end)
                return -1;
            if (p[-1] == '/')
                --depth;
            ++p;
        }
    }
    return deepest;
}

// True when the document nests elements deeper than kMaxElementDepth; line
// and column then tell where. Other faults are left to the DOM parser.
bool nestsTooDeeply(const QByteArray& data, int* line, int* column)
{
    const int bound = nestingBound(data);
    if (bound >= 0 && bound <= kMaxElementDepth)
        return false;
    QXmlStreamReader reader(data);
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (++depth > kMaxElementDepth) {
                *line = int(reader.lineNumber());
                *column = int(reader.columnNumber());
                return true;
            }
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
        }
    }
    return false;
}

// A menu file parsed before, with the bytes it was parsed from. The same
// file is loaded over and over (a menu bar per window, a popup per view),
// and the same bytes always give the same document, so one parse serves
// them all. The file is still read on every load and compared, so an
// edited file is parsed afresh; documents are only read, never changed.
struct ParsedMenuFile
{
    QByteArray data;
    QDomDocument document;
};

// A few files of application size are kept; larger or more are parsed on
// every load as before. A parsed document takes several times its file's
// bytes, so the cap keeps the whole store to a few megabytes.
const int kParsedFilesKept = 16;
const int kLargestFileKept = 1 << 18;

QHash<QString, ParsedMenuFile>& parsedMenuFiles()
{
    static QHash<QString, ParsedMenuFile> files;
    return files;
}

} // namespace

Mnu_Manager::Mnu_Manager() : mMenuP(nullptr), mInstantiated(false), mParentSegmentP(nullptr)
{
}

void Mnu_Manager::setItemRadioGroup(Mnu_MenuID, const void*)
{
}

Mnu_Manager::~Mnu_Manager()
{
    delete mMenuP;
}

bool Mnu_Manager::setMenus(QDomElement* element)
{
    clearMenus();
    return element && xmlDerivedParser(*element);
}

bool Mnu_Manager::setMenus(char* name)
{
    clearMenus();
    return xmlParser(name);
}

bool Mnu_Manager::addMenus(char* name)
{
    return xmlParser(name);
}

void Mnu_Manager::addMenu(Mnu_Menu* menu)
{
    if (menu == mMenuP)
        return;
    delete mMenuP;
    mMenuP = menu;
    if (mMenuP)
        mMenuP->setManager(this);
}

bool Mnu_Manager::instantiateMenus()
{
    return false;
}

void Mnu_Manager::clearMenus()
{
    delete mMenuP;
    mMenuP = nullptr;
    mInstantiated = false;
}

bool Mnu_Manager::doSystemMessageConnect()
{
    return false;
}

Mnu_Menu* Mnu_Manager::getMenu()
{
    return mMenuP;
}

bool Mnu_Manager::isInstantiated()
{
    return mInstantiated;
}

Mnu_MenuID Mnu_Manager::insertSeparator()
{
    return Mnu_MenuID();
}

Mnu_MenuID Mnu_Manager::insertItem(const QString&, QString&, Mnu_Manager*)
{
    return Mnu_MenuID();
}

Mnu_MenuID Mnu_Manager::insertItem(const QString&, QString&)
{
    return Mnu_MenuID();
}

void Mnu_Manager::setItemAccelerator(Mnu_MenuID, const QString&)
{
}

void Mnu_Manager::setItemEnabled(Mnu_MenuID, bool)
{
}

void Mnu_Manager::setItemCheckable(Mnu_MenuID, bool)
{
}

void Mnu_Manager::setItemChecked(Mnu_MenuID, bool)
{
}

bool Mnu_Manager::getItemChecked(Mnu_MenuID)
{
    return false;
}

bool Mnu_Manager::removeItem(Mnu_MenuID)
{
    return false;
}

void Mnu_Manager::setItemIcon(Mnu_MenuID, void*)
{
}

void Mnu_Manager::setItemIcon(Mnu_MenuID, const QString&)
{
}

void Mnu_Manager::setItemIcon(Mnu_MenuID, unsigned char*, int)
{
}

void Mnu_Manager::setParentSegment(Mnu_SubmenuSegment* segment)
{
    mParentSegmentP = segment;
}

void Mnu_Manager::setWhatsThis(Mnu_MenuID, const QString&)
{
}

bool Mnu_Manager::tstGetItemEnabled(const QString&)
{
    return false;
}

bool Mnu_Manager::tstGetItemChecked(const QString&)
{
    return false;
}

bool Mnu_Manager::tstGetItemVisible(const QString&)
{
    return false;
}

QString Mnu_Manager::tstGetItemText(const QString&)
{
    return QString();
}

bool Mnu_Manager::tstActivateItem(const QString&)
{
    return false;
}

bool Mnu_Manager::tstFindItemByPath(const QString&, Mnu_Manager**, Mnu_Segment**, int*)
{
    return false;
}

void Mnu_Manager::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment>)
{
}

bool Mnu_Manager::xmlParser(char* name)
{
    if (!name)
        return false;
    const QString fileName = QString::fromLocal8Bit(name);
    QFile file(Ost_Resource::getResourcePath() + fileName + QLatin1String(".xml"));
    if (!openMenuFile(file)) {
        file.setFileName(fileName);
        if (!openMenuFile(file))
            return false;
    }

    // One read serves both passes.
    const QByteArray data = file.readAll();
    const QString path = file.fileName();
    file.close();

    QHash<QString, ParsedMenuFile>& parsed = parsedMenuFiles();
    const auto known = parsed.constFind(path);
    QDomDocument document;
    if (known != parsed.constEnd() && known->data == data) {
        document = known->document;
    } else {
        QString message;
        int line = 0;
        int column = 0;
        const bool tooDeep = nestsTooDeeply(data, &line, &column);
        if (tooDeep)
            message = QStringLiteral("elements nested too deeply");
        if (tooDeep || !document.setContent(data, false, &message, &line, &column)) {
            qCDebug(lcKelMenu, "Mnu_Manager xmlParser parse error %s at line %d column %d", qPrintable(message),
                    line, column);
            parsed.remove(path);
            return false;
        }
        if (data.size() <= kLargestFileKept) {
            if (parsed.size() >= kParsedFilesKept && !parsed.contains(path))
                parsed.clear();
            parsed.insert(path, ParsedMenuFile{data, document});
        }
    }
    QDomElement root = document.documentElement();
    return xmlDerivedParser(root);
}

void Mnu_Manager::setWhatsThis(Mnu_MenuID id, const std::string& text)
{
    setWhatsThis(id, QString::fromStdString(text));
}

void Mnu_Manager::dumpManagerInformation(const QString& prefix) const
{
    qCDebug(lcKelMenu, "%sMnu_Manager: this  [%p]", qPrintable(prefix), static_cast<const void*>(this));
    qCDebug(lcKelMenu, "%s   menu:           [%p] (Mnu_Menu *)", qPrintable(prefix), static_cast<const void*>(mMenuP));
    qCDebug(lcKelMenu, "%s   parent segment: [%p] (Mnu_SubmenuSegment *)", qPrintable(prefix),
            static_cast<const void*>(mParentSegmentP));
    if (mMenuP)
        mMenuP->dump(prefix + QLatin1String("   "));
}
