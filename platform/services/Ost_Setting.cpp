#include "Ost_Setting.h"

#include "Mv_Logging_p.h"

#include <QStringList>
#include <QXmlStreamReader>

namespace {

// Every leaf's name is its whole element path, so a text that nests deep
// and then holds many leaves would ask for names far larger than itself
// (and for as much time to build them). Texts whose names would pass this
// many characters in all are refused.
const qint64 kMaxNameCharacters = qint64(1) << 24;

} // namespace

Ost_Setting::Ost_Setting()
    : mDirty(false)
{
}

void Ost_Setting::SetPrefix(const QString& prefix)
{
    if (prefix != mPrefix) {
        mPrefix = prefix;
        mDirty = true;
    }
}

void Ost_Setting::SetStartRoot(const QString& startRoot)
{
    if (startRoot != mStartRoot) {
        mStartRoot = startRoot;
        mDirty = true;
    }
}

bool Ost_Setting::SetXML(const QString& xml, bool merge)
{
    // Only the element structure and the leaf texts are kept, so that a later
    // SetStartRoot can pick another part of the same text.
    ElementList elements;
    QVector<int> open;
    QVector<qint64> pathLengths; // of the open elements' dotted paths
    qint64 nameCharacters = 0;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            Element element;
            element.mName = reader.qualifiedName().toString();
            element.mParent = open.isEmpty() ? -1 : open.last();
            element.mDepth = open.size();
            element.mHasChildElements = false;
            if (!open.isEmpty())
                elements[open.last()].mHasChildElements = true;
            pathLengths.append((open.isEmpty() ? 0 : pathLengths.last() + 1) + element.mName.size());
            elements.append(element);
            open.append(elements.size() - 1);
            break;
        }
        case QXmlStreamReader::EndElement:
            if (!open.isEmpty()) {
                Element& element = elements[open.last()];
                if (element.mHasChildElements)
                    element.mText.clear();
                else
                    nameCharacters += pathLengths.last();
                open.removeLast();
                pathLengths.removeLast();
                if (nameCharacters > kMaxNameCharacters)
                    reader.raiseError(QStringLiteral("parameter names too long"));
            }
            break;
        case QXmlStreamReader::Characters:
            if (!open.isEmpty() && !elements[open.last()].mHasChildElements)
                elements[open.last()].mText += reader.text();
            break;
        default:
            break;
        }
    }
    if (reader.hasError()) {
        qCDebug(lcKelPlatform, "Ost_Setting::SetXML parse error %s at line %d column %d",
                qPrintable(reader.errorString()), int(reader.lineNumber()), int(reader.columnNumber()));
        return false;
    }
    if (!merge)
        mDocuments.clear();
    mDocuments.append(elements);
    mDirty = true;
    return true;
}

void Ost_Setting::appendParams(const ElementList& elements, QVector<Param>& params, QHash<QString, int>& index) const
{
    int root = -1;
    if (mStartRoot.isEmpty()) {
        root = elements.isEmpty() ? -1 : 0;
    } else {
        for (int i = 0; i < elements.size() && root < 0; ++i) {
            if (elements[i].mName == mStartRoot)
                root = i;
        }
    }
    if (root < 0)
        return;

    // The start root's descendants directly follow it in document order.
    const int rootDepth = elements[root].mDepth;
    QStringList parts;
    for (int i = root + 1; i < elements.size() && elements[i].mDepth > rootDepth; ++i) {
        const Element& leaf = elements[i];
        if (leaf.mHasChildElements)
            continue;
        parts.clear();
        for (int e = i; e != root; e = elements[e].mParent)
            parts.prepend(elements[e].mName);
        const QString name = parts.join(QLatin1Char('.'));
        const QHash<QString, int>::const_iterator known = index.constFind(name);
        if (known != index.constEnd()) {
            params[known.value()].second = leaf.mText;
        } else {
            index.insert(name, params.size());
            params.append(Param(name, leaf.mText));
        }
    }
}

void Ost_Setting::refresh() const
{
    if (!mDirty)
        return;
    mDirty = false;

    QVector<Param> all;
    QHash<QString, int> allIndex;
    for (const ElementList& elements : mDocuments)
        appendParams(elements, all, allIndex);

    mParams.clear();
    mParamIndex.clear();
    const QString dotted = mPrefix + QLatin1Char('.');
    for (const Param& param : qAsConst(all)) {
        if (mPrefix.isEmpty() || param.first == mPrefix || param.first.startsWith(dotted)) {
            mParamIndex.insert(param.first, mParams.size());
            mParams.append(param);
        }
    }
}

bool Ost_Setting::GetNthParam(int n, QString& name, QString& value) const
{
    refresh();
    if (n < 0 || n >= mParams.size())
        return false;
    name = mParams[n].first;
    value = mParams[n].second;
    return true;
}

int Ost_Setting::GetParamCount() const
{
    refresh();
    return mParams.size();
}

bool Ost_Setting::GetParam(const QString& name, QString& value) const
{
    refresh();
    const QHash<QString, int>::const_iterator found = mParamIndex.constFind(name);
    if (found == mParamIndex.constEnd())
        return false;
    value = mParams[found.value()].second;
    return true;
}
