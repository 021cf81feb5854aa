#include "Mnu_CommandSegment.h"

#include "Kel_Logging_p.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_Writer_p.h"
#include "Mv_Utils.h"
#include "Mv_Variant.h"
#include "Uip_CloneParseTree.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QDomElement>
#include <QHash>
#include <QTimer>
#include <memory>

namespace {

// The tree of an action script, the segment's own. The commands of a menu
// bar call the same few actions, so most texts come again and again:
// each text is parsed once and copied after that, which costs a fraction
// of parsing. Only scripts that parse are kept, so that a broken one is
// parsed (and reported) every time as before.
Uip_ParseNode* parseActionScript(const QString& script)
{
    static QHash<QString, std::shared_ptr<const Uip_ParseNode>> parsed;
    auto it = parsed.constFind(script);
    if (it != parsed.constEnd()) {
        if (Uip_ParseNode* copy = Uip_CloneParseTree(it->get()))
            return copy;
    }
    Uip_ParseNode* tree = Uip_ParseScript(script, nullptr);
    if (!tree)
        return nullptr;
    // Bounded: scripts may be made by programs.
    if (parsed.size() >= 512)
        parsed.clear();
    std::shared_ptr<const Uip_ParseNode> kept(Uip_CloneParseTree(tree));
    if (kept)
        parsed.insert(script, kept);
    return tree;
}

} // namespace

Mnu_CommandSegment::Mnu_CommandSegment(Mnu_Menu* menu, QDomElement* element)
    : Mnu_Segment(menu), mConnected(false)
{
    if (element)
        xmlParser(element);
}

Mnu_CommandSegment::~Mnu_CommandSegment() = default;

int Mnu_CommandSegment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;
    mItemID = Mnu_MenuID();
    refreshState();
    doWhatsThisConnections();
    if (!mVisible || !manager)
        return 0;
    mItemID = manager->insertItem(mName, mDisplayedText);
    if (!mItemID.IsValid())
        return 0;
    mMenuP->setIDAssignedToSegment(this, mItemID);
    if (!mEffectiveAccelerator.isEmpty())
        manager->setItemAccelerator(mItemID, mEffectiveAccelerator);
    manager->setItemEnabled(mItemID, mEnabled);
    if (!mIconName.isEmpty() && mIconDataP)
        manager->setItemIcon(mItemID, mIconDataP.get(), mIconDataLength);
    if (!mEffectiveWhatsThisText.isEmpty())
        manager->setWhatsThis(mItemID, mEffectiveWhatsThisText);
    return 1;
}

int Mnu_CommandSegment::getVisibleItemCount()
{
    return mVisible ? 1 : 0;
}

int Mnu_CommandSegment::getItemCount()
{
    return 1;
}

void Mnu_CommandSegment::itemActivated(Mnu_MenuID)
{
    if (!mParseTreeP)
        return;
    // Never run inside the menu's own activation: the script may well
    // change or destroy the menu.
    if (!Mv_Utils::Mv_AddDelayedAction(mEnvironment, mActionScript))
        QTimer::singleShot(0, this, &Mnu_CommandSegment::itemActivatedTimer);
}

void Mnu_CommandSegment::refreshState()
{
    Mnu_Segment::instantiate(mManagerP);
    if (mEnabled && mVisible)
        mEnabled = mParseTreeP && mParseTreeP->isConnected();
}

Mnu_MenuID Mnu_CommandSegment::getIndexedID(int)
{
    return mItemID;
}

bool Mnu_CommandSegment::activate(Mnu_MenuID id)
{
    itemActivated(id);
    return true;
}

void Mnu_CommandSegment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Mnu_Segment::makeConnections(environment);
    mEnvironment = environment ? environment : Mv_ConnectionEnvironment::blankEnvironment();
    mConnected = true;
    connectScript();
}

void Mnu_CommandSegment::connectScript()
{
    if (!mParseTreeP && !mActionScript.isEmpty())
        mParseTreeP.reset(parseActionScript(mActionScript));
    // A script that does not connect is dropped: the item stays disabled
    // until the segment is connected again.
    if (mParseTreeP && !mParseTreeP->ConnectAndTypeCheck(mEnvironment, nullptr))
        mParseTreeP.reset();
}

void Mnu_CommandSegment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_CommandSegment");
    qCDebug(lcKelMenu, "%s   action script: [%s]", qPrintable(prefix), qPrintable(mActionScript));
}

void Mnu_CommandSegment::setActionScript(const QString& script)
{
    if (script == mActionScript)
        return;
    mActionScript = script;
    mParseTreeP.reset();
    if (mConnected)
        connectScript();
}

void Mnu_CommandSegment::itemActivatedTimer()
{
    if (!mParseTreeP)
        return;
    Mv_Variant result;
    mParseTreeP->Evaluate(&result);
}

bool Mnu_CommandSegment::parseSubElement(QDomElement* element)
{
    if (element->tagName() == QLatin1String("ActionScript")) {
        mActionScript = element->text();
        return true;
    }
    return Mnu_Segment::parseSubElement(element);
}

bool Mnu_CommandSegment::saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    return saveFramedSegment(out, indent, format, "CommandSegment", "Mnu_CommandSegment", [&](const QString& inner) {
        if (mActionScript.isEmpty())
            return;
        if (format == kSaveXml) {
            Mnu_Writer::emitLine(out, inner, Mnu_Writer::element(QStringLiteral("ActionScript"), mActionScript));
        } else {
            // Scripts quote their texts; those quotes must survive in a C++ string.
            QString script = mActionScript;
            script.replace(QLatin1Char('"'), QLatin1String("\\\""));
            Mnu_Writer::emitLine(
                out, inner,
                Mnu_Writer::setterCall(QStringLiteral("segment"), QStringLiteral("setActionScript"), script));
        }
    });
}
