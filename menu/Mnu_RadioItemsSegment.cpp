#include "Mnu_RadioItemsSegment.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"

#include <QDomElement>

Mnu_RadioItemsSegment::Mnu_RadioItemsSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu), mCurrentValue(0)
{
    if (element)
        xmlParser(element);
}

Mnu_RadioItemsSegment::~Mnu_RadioItemsSegment() = default;

int Mnu_RadioItemsSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mChoiceIDMap.clear();
    mIDs.clear();
    mCurrentItemID = Mnu_MenuID();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager)
        return 0;
    for (const auto& choice : mChoices) {
        QString text = choice->text;
        const Mnu_MenuID id = manager->insertItem(text, text);
        if (!id.IsValid())
            continue;
        manager->setItemCheckable(id, true);
        manager->setItemRadioGroup(id, this);
        mChoiceIDMap[id] = choice->id;
        mIDs.push_back(id);
        mMenuP->setIDAssignedToSegment(this, id);
        if (choice->id == mCurrentValue) {
            manager->setItemChecked(id, true);
            mCurrentItemID = id;
        }
        applyCommonItemSettings(id);
    }
    return int(mChoices.size());
}

int Mnu_RadioItemsSegment::getVisibleItemCount()
{
    return mVisible ? int(mChoiceIDMap.size()) : 0;
}

int Mnu_RadioItemsSegment::getItemCount()
{
    return int(mChoices.size());
}

void Mnu_RadioItemsSegment::itemActivated(Mnu_MenuID id)
{
    if (!mCurrentItemModel.isConnected() || id == mCurrentItemID)
        return;
    auto it = mChoiceIDMap.find(id);
    if (it == mChoiceIDMap.end())
        return;
    // The model first: its listeners may look at the menu's state.
    if (mCurrentItemModel.set(long(it->second)) == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    if (mManagerP) {
        mManagerP->setItemChecked(mCurrentItemID, false);
        mManagerP->setItemChecked(id, true);
    }
    mCurrentItemID = id;
}

void Mnu_RadioItemsSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible) {
        if (mCurrentItemModel.isConnected())
            mCurrentValue = mCurrentItemModel->value(0);
        else
            mEnabled = false;
    }
}

Mnu_MenuID Mnu_RadioItemsSegment::getIndexedID(int index)
{
    if (index < 0 || index >= int(mIDs.size()))
        return Mnu_MenuID();
    return mIDs[size_t(index)];
}

void Mnu_RadioItemsSegment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Mnu_Segment::makeConnections(environment);
    mCurrentItemModel.connect(environment);
}

void Mnu_RadioItemsSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_RadioItemsSegment");
    qCDebug(lcKelMenu, "%s   currentItemConnectionName: [%s], current value [%ld]", qPrintable(prefix),
            qPrintable(mCurrentItemModel.spec()), mCurrentValue);
    for (const auto& choice : mChoices)
        qCDebug(lcKelMenu, "%s      choice[%d]: [%s]", qPrintable(prefix), choice->id, qPrintable(choice->text));
}

QString Mnu_RadioItemsSegment::getItemTextAt(int index) const
{
    if (index < 0 || index >= int(mChoices.size()))
        return QString();
    return mChoices[size_t(index)]->text;
}

int Mnu_RadioItemsSegment::getItemIDAt(int index) const
{
    if (index < 0 || index >= int(mChoices.size()))
        return 0;
    return mChoices[size_t(index)]->id;
}

void Mnu_RadioItemsSegment::setItemTextIDAt(int index, const QString& text, int id)
{
    if (index < 0 || index >= int(mChoices.size()))
        return;
    mChoices[size_t(index)]->text = text;
    mChoices[size_t(index)]->id = id;
}

void Mnu_RadioItemsSegment::clearItemMap()
{
    mChoices.clear();
}

void Mnu_RadioItemsSegment::addItemToMap(const QString& text, int id)
{
    mChoices.emplace_back(new Choice{id, text});
}

bool Mnu_RadioItemsSegment::parseSubElement(QDomElement* element)
{
    const QString tag = element->tagName();
    if (tag == QLatin1String("CurrentItemConnectionName")) {
        mCurrentItemModel.setSpec(element->text());
        return true;
    }
    if (tag == QLatin1String("RadioItem")) {
        parseDerivedSubElement(element);
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

void Mnu_RadioItemsSegment::parseDerivedSubElement(QDomElement* element)
{
    QString text;
    int id = 0;
    bool haveText = false;
    bool haveID = false;
    QDomNode node = element->firstChild();
    for (; !node.isNull(); node = node.nextSibling()) {
        const QDomElement child = node.toElement();
        const QString tag = child.tagName();
        if (tag == QLatin1String("Text")) {
            text = child.text();
            haveText = true;
        } else if (tag == QLatin1String("ID")) {
            bool ok = false;
            const int value = child.text().toInt(&ok, 10);
            if (ok) {
                id = value;
                haveID = true;
            } else {
                qCDebug(lcKelMenu,
                        "Mnu_RadioItemsSegment::parseDerivedSubElement can't get int from <%s> within <RadioItem>",
                        qPrintable(child.text()));
            }
        } else {
            qCDebug(lcKelMenu, "Mnu_RadioItemsSegment::parseDerivedSubElement unknown tag <%s> within <RadioItem>",
                    qPrintable(tag));
        }
    }
    if (!haveText || !haveID) {
        // Named after the node where the walk stopped: after a full walk
        // there is none, so the brackets stay empty.
        qCDebug(lcKelMenu, "Mnu_RadioItemsSegment::parseDerivedSubElement incomplete <%s> within <RadioItem>",
                qPrintable(node.toElement().tagName()));
        return;
    }
    addItemToMap(text, id);
}

// Only the choices and the current-item connection are written: the common
// fields of this kind are not kept by either form.
bool Mnu_RadioItemsSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    const QString inner = indent + QLatin1Char('\t');
    if (format == kSaveXml) {
        Mnu_Writer::emitLine(out, indent, QStringLiteral("<RadioItemsSegment>"));
        Mnu_Writer::emitField(out, inner, true, QStringLiteral("CurrentItemConnectionName"), QString(), QString(),
                              getSelectedItemConnectionName());
        const QString choiceIndent = inner + QLatin1Char('\t');
        for (const auto& choice : mChoices) {
            Mnu_Writer::emitLine(out, inner, QStringLiteral("<RadioItem>"));
            Mnu_Writer::emitLine(out, choiceIndent,
                                 Mnu_Writer::element(QStringLiteral("Text"), Mnu_Writer::escapedText(choice->text)));
            Mnu_Writer::emitLine(out, choiceIndent,
                                 Mnu_Writer::element(QStringLiteral("ID"), QString::number(choice->id)));
            Mnu_Writer::emitLine(out, inner, QStringLiteral("</RadioItem>"));
        }
        Mnu_Writer::emitLine(out, indent, QStringLiteral("</RadioItemsSegment>"));
    } else if (format == kSaveSource) {
        Mnu_Writer::emitLine(out, indent, QStringLiteral("/* Generate a new RadioItemsSegment */"));
        Mnu_Writer::emitLine(out, indent, QStringLiteral("{"));
        Mnu_Writer::emitLine(out, inner,
                             QStringLiteral("Mnu_RadioItemsSegment* segment = new Mnu_RadioItemsSegment(menu, NULL);"));
        Mnu_Writer::emitField(out, inner, false, QString(), QStringLiteral("segment"),
                              QStringLiteral("setSelectedItemConnectionName"), getSelectedItemConnectionName());
        for (const auto& choice : mChoices)
            Mnu_Writer::emitLine(out, inner,
                                 QLatin1String("segment->addItemToMap( \"") + choice->text + QLatin1String("\", ")
                                     + QString::number(choice->id) + QLatin1String(" );"));
        Mnu_Writer::emitLine(out, inner, QStringLiteral("menu->addSegment(segment);"));
        Mnu_Writer::emitLine(out, indent, QStringLiteral("}"));
    }
    return true;
}
