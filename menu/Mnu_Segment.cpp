#include "Mnu_Segment.h"

#include "Kel_Logging_p.h"
#include "Mnu_BooleanSegment.h"
#include "Mnu_CommandSegment.h"
#include "Mnu_ListSegment.h"
#include "Mnu_Manager.h"
#include "Mnu_Menu.h"
#include "Mnu_RadioItemsSegment.h"
#include "Mnu_RadioListSegment.h"
#include "Mnu_SeparatorSegment.h"
#include "Mnu_SubmenuSegment.h"
#include "Mnu_Writer_p.h"
#include "Ost_Resource.h"

#include <QDomElement>
#include <QFile>
#include <QFileInfo>

namespace {

// Icons are small images; anything larger is not read, so that a stray
// name cannot make a menu swallow a huge file.
const qint64 kMaxIconFileSize = 16 * 1024 * 1024;

} // namespace

Mnu_Segment::Mnu_Segment(Mnu_Menu* menu)
    : mMenuP(menu), mManagerP(nullptr), mIconDataLength(0), mEnabled(false), mVisible(false)
{
    mTextModel.onNotify([this] { handleTextChanged(); });
    mAcceleratorModel.onNotify([this] { handleAcceleratorChanged(); });
    mWhatsThisModel.onNotify([this] { handleWhatsThisChanged(); });
    mWhyDisabledModel.onNotify([this] { handleWhatsThisChanged(); });
}

Mnu_Segment::~Mnu_Segment() = default;

Mnu_Segment* Mnu_Segment::SegmentFactory(Mnu_Menu* menu, QDomElement* element)
{
    if (!element)
        return nullptr;
    const QString tag = element->tagName();
    if (tag == QLatin1String("CommandSegment"))
        return new Mnu_CommandSegment(menu, element);
    if (tag == QLatin1String("BooleanSegment"))
        return new Mnu_BooleanSegment(menu, element);
    if (tag == QLatin1String("ListSegment"))
        return new Mnu_ListSegment(menu, element);
    if (tag == QLatin1String("RadioListSegment"))
        return new Mnu_RadioListSegment(menu, element);
    if (tag == QLatin1String("RadioItemsSegment"))
        return new Mnu_RadioItemsSegment(menu, element);
    if (tag == QLatin1String("Separator"))
        return new Mnu_SeparatorSegment(menu, element);
    if (tag == QLatin1String("SubMenuSegment"))
        return new Mnu_SubmenuSegment(menu, element);
    qCDebug(lcKelMenu, "Mnu_Segment::SegmentFactory - unknown segment tag <%s>", qPrintable(tag));
    return nullptr;
}

bool Mnu_Segment::saveSegment(std::ostream&, const QString&, Mnu_Segment::saveFormat)
{
    return false;
}

bool Mnu_Segment::emitCommonTags(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format)
{
    if (format != kSaveXml && format != kSaveSource)
        return true;
    const bool xml = format == kSaveXml;
    const QString segment = QStringLiteral("segment");
    auto field = [&](const char* tag, const char* setter, const QString& value) {
        Mnu_Writer::emitField(out, indent, xml, QLatin1String(tag), segment, QLatin1String(setter), value);
    };
    field("Name", "setName", getName());
    const QString text = getItemText();
    if (!text.isEmpty()) {
        if (xml) {
            Mnu_Writer::emitLine(out, indent,
                                 Mnu_Writer::element(QStringLiteral("Text"), Mnu_Writer::escapedText(text)));
        } else {
            // The translation comment names the menu, or repeats the text in a menu without a name.
            const QString menuName = mMenuP ? mMenuP->getName() : QString();
            Mnu_Writer::emitLine(out, indent,
                                 QLatin1String("segment->setItemText( Mnu_QtManager::tr(\"") + text
                                     + QLatin1String("\",\"This is an item in the ")
                                     + (menuName.isEmpty() ? text : menuName) + QLatin1String(" menu.\") );"));
        }
    }
    field("TextConnectionName", "setTextConnectionName", getTextConnectionName());
    field("Accelerator", "setAccelerator", getAccelerator());
    field("AcceleratorConnectionName", "setAcceleratorConnectionName", getAcceleratorConnectionName());
    field("Icon", "setIconName", getIconName());
    field("VisibleConnectionName", "setVisibleConnectionName", getVisibleConnectionName());
    field("EnableConnectionName", "setEnableConnectionName", getEnableConnectionName());
    field("WhatsThisText", "setWhatsThisText", getWhatsThisText());
    field("WhatsThisConnectionName", "setWhatsThisConnectionName", getWhatsThisConnectionName());
    field("WhyDisabledConnectionName", "setWhyDisabledConnectionName", getWhyDisabledConnectionName());
    return true;
}

bool Mnu_Segment::saveFramedSegment(std::ostream& out, const QString& indent, saveFormat format, const char* xmlTag,
                                    const char* className, const std::function<void(const QString&)>& ownLines,
                                    const QStringList& construction)
{
    if (format != kSaveXml && format != kSaveSource)
        return true;
    const QString inner = indent + QLatin1Char('\t');
    const QString cls = QLatin1String(className);
    if (format == kSaveXml) {
        Mnu_Writer::emitLine(out, indent, QLatin1Char('<') + QLatin1String(xmlTag) + QLatin1Char('>'));
        emitCommonTags(out, inner, format);
        ownLines(inner);
        Mnu_Writer::emitLine(out, indent, QLatin1String("</") + QLatin1String(xmlTag) + QLatin1Char('>'));
        return true;
    }
    Mnu_Writer::emitLine(out, indent, QLatin1String("/* Generate a new ") + cls.mid(4) + QLatin1String(" */"));
    Mnu_Writer::emitLine(out, indent, QStringLiteral("{"));
    if (construction.isEmpty())
        Mnu_Writer::emitLine(out, inner,
                             cls + QLatin1String("* segment = new ") + cls + QLatin1String("(menu, NULL);"));
    for (const QString& line : construction)
        Mnu_Writer::emitLine(out, inner, line);
    emitCommonTags(out, inner, format);
    ownLines(inner);
    Mnu_Writer::emitLine(out, inner, QStringLiteral("menu->addSegment(segment);"));
    Mnu_Writer::emitLine(out, indent, QStringLiteral("}"));
    return true;
}

int Mnu_Segment::instantiate(Mnu_Manager* manager)
{
    mManagerP = manager;

    // A state whose model cannot be reached is off: such items are hidden
    // or disabled rather than shown in a state nobody controls.
    mVisible = !mVisibleModel.isNamed() || (mVisibleModel.isConnected() && mVisibleModel->value(false));
    mEnabled = !mEnableModel.isNamed() || (mEnableModel.isConnected() && mEnableModel->value(false));

    if (mTextModel.isNamed() && mTextModel.isConnected())
        mConnectedText = mTextModel->value();
    mDisplayedText = mTextModel.isNamed() && !mConnectedText.isEmpty() ? mConnectedText : mText;

    if (mAcceleratorModel.isNamed() && mAcceleratorModel.isConnected()) {
        const QString accelerator = mAcceleratorModel->value();
        if (!accelerator.isNull())
            mConnectedAccelerator = accelerator;
    }
    mEffectiveAccelerator = mAcceleratorModel.isNamed() && !mConnectedAccelerator.isEmpty()
                                ? mConnectedAccelerator
                                : mAccelerator;
    return 0;
}

void Mnu_Segment::itemActivated(Mnu_MenuID)
{
}

bool Mnu_Segment::isSeparator()
{
    return false;
}

void Mnu_Segment::refreshState()
{
    // Only the common states: making items is instantiate's business.
    Mnu_Segment::instantiate(mManagerP);
}

Mnu_MenuID Mnu_Segment::getIndexedID(int)
{
    return Mnu_MenuID();
}

bool Mnu_Segment::activate(Mnu_MenuID)
{
    return false;
}

bool Mnu_Segment::isEnabled(bool refresh)
{
    if (refresh)
        refreshState();
    return mEnabled;
}

QString Mnu_Segment::getName() const
{
    return mName;
}

void Mnu_Segment::setName(const QString& name)
{
    mName = name;
}

QString Mnu_Segment::getItemText() const
{
    return mText;
}

void Mnu_Segment::setItemText(const QString& text)
{
    mText = text;
}

QString Mnu_Segment::getDisplayedText() const
{
    return mDisplayedText;
}

QString Mnu_Segment::getTextConnectionName() const
{
    return mTextModel.spec();
}

void Mnu_Segment::setTextConnectionName(const QString& name)
{
    mTextModel.setSpec(name);
}

QString Mnu_Segment::getAccelerator() const
{
    return mAccelerator;
}

void Mnu_Segment::setAccelerator(const QString& accelerator)
{
    mAccelerator = accelerator;
}

QString Mnu_Segment::getAcceleratorConnectionName() const
{
    return mAcceleratorModel.spec();
}

void Mnu_Segment::setAcceleratorConnectionName(const QString& name)
{
    mAcceleratorModel.setSpec(name);
}

QString Mnu_Segment::getIconName() const
{
    return mIconName;
}

void Mnu_Segment::setIconName(const QString& name)
{
    mIconName = name;
    readIconFile();
}

QString Mnu_Segment::getEnableConnectionName() const
{
    return mEnableModel.spec();
}

void Mnu_Segment::setEnableConnectionName(const QString& name)
{
    mEnableModel.setSpec(name);
}

QString Mnu_Segment::getVisibleConnectionName() const
{
    return mVisibleModel.spec();
}

void Mnu_Segment::setVisibleConnectionName(const QString& name)
{
    mVisibleModel.setSpec(name);
}

QString Mnu_Segment::getWhatsThisConnectionName() const
{
    return mWhatsThisModel.spec();
}

void Mnu_Segment::setWhatsThisConnectionName(const QString& name)
{
    mWhatsThisModel.setSpec(name);
}

QString Mnu_Segment::getWhyDisabledConnectionName() const
{
    return mWhyDisabledModel.spec();
}

void Mnu_Segment::setWhyDisabledConnectionName(const QString& name)
{
    mWhyDisabledModel.setSpec(name);
}

QString Mnu_Segment::getWhatsThisText() const
{
    return mWhatsThisText;
}

void Mnu_Segment::setWhatsThisText(const QString& text)
{
    mWhatsThisText = text;
}

void Mnu_Segment::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mTextModel, &mAcceleratorModel, &mVisibleModel, &mEnableModel,
                                                    &mWhatsThisModel, &mWhyDisabledModel});
}

void Mnu_Segment::dump(const QString& prefix) const
{
    dumpSegmentInformation(prefix, "Mnu_Segment");
}

bool Mnu_Segment::xmlParser(QDomElement* element)
{
    if (!element)
        return true;
    for (QDomNode node = element->firstChild(); !node.isNull(); node = node.nextSibling()) {
        QDomElement child = node.toElement();
        parseSubElement(&child);
    }
    return true;
}

bool Mnu_Segment::parseSubElement(QDomElement* element)
{
    const QString tag = element->tagName();
    if (tag == QLatin1String("Name"))
        mName = element->text();
    else if (tag == QLatin1String("Text"))
        mText = element->text();
    else if (tag == QLatin1String("TextConnectionName"))
        mTextModel.setSpec(element->text());
    else if (tag == QLatin1String("Accelerator"))
        mAccelerator = element->text();
    else if (tag == QLatin1String("AcceleratorConnectionName"))
        mAcceleratorModel.setSpec(element->text());
    else if (tag == QLatin1String("VisibleConnectionName"))
        mVisibleModel.setSpec(element->text());
    else if (tag == QLatin1String("EnableConnectionName"))
        mEnableModel.setSpec(element->text());
    else if (tag == QLatin1String("Icon")) {
        mIconName = element->text();
        readIconFile();
    } else if (tag == QLatin1String("WhatsThisText"))
        mWhatsThisText = element->text();
    else if (tag == QLatin1String("WhatsThisConnectionName"))
        mWhatsThisModel.setSpec(element->text());
    else if (tag == QLatin1String("WhyDisabledConnectionName"))
        mWhyDisabledModel.setSpec(element->text());
    else
        return false;
    return true;
}

bool Mnu_Segment::readIconFile()
{
    mIconDataP.reset();
    mIconDataLength = 0;

    const QString path = Ost_Resource::getResourcePath() + mIconName;
    QFile file(path);
    // Only plain files of icon size: a folder or a device would never end.
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > kMaxIconFileSize || !file.open(QIODevice::ReadOnly)) {
        qCDebug(lcKelMenu, "Unable to open icon file name %s\n", qPrintable(path));
        return false;
    }
    file.seek(file.size());
    const qint64 length = file.pos();
    file.seek(0);
    std::unique_ptr<unsigned char[]> data(new unsigned char[size_t(length > 0 ? length : 1)]);
    const qint64 read = length > 0 ? file.read(reinterpret_cast<char*>(data.get()), length) : 0;
    mIconDataP = std::move(data);
    mIconDataLength = int(read > 0 ? read : 0);
    return true;
}

void Mnu_Segment::doWhatsThisConnections()
{
    if (!mEnabled && mWhyDisabledModel.isNamed() && mWhyDisabledModel.isConnected()) {
        const QString why = mWhyDisabledModel->value();
        if (!why.isEmpty()) {
            mEffectiveWhatsThisText = why;
            return;
        }
    }
    if (!mWhatsThisModel.isNamed()) {
        mEffectiveWhatsThisText = mWhatsThisText;
        return;
    }
    QString text;
    if (mWhatsThisModel.isConnected())
        text = mWhatsThisModel->value();
    mEffectiveWhatsThisText = text.isEmpty() ? mWhatsThisText : text;
}

void Mnu_Segment::dumpSegmentInformation(const QString& prefix, const char* className) const
{
    qCDebug(lcKelMenu, "%s%s: this[%lx], name[%s], use[%s], enabled[%d], visible[%d]", qPrintable(prefix), className,
            static_cast<unsigned long>(reinterpret_cast<quintptr>(this)), qPrintable(mName), qPrintable(mDisplayedText),
            int(mEnabled), int(mVisible));
}

void Mnu_Segment::applyCommonItemSettings(Mnu_MenuID id)
{
    mManagerP->setItemEnabled(id, mEnabled);
    if (!mEffectiveWhatsThisText.isEmpty())
        mManagerP->setWhatsThis(id, mEffectiveWhatsThisText);
}

void Mnu_Segment::handleTextChanged()
{
    if (mTextModel.isConnected())
        mConnectedText = mTextModel->value();
}

void Mnu_Segment::handleAcceleratorChanged()
{
    if (!mAcceleratorModel.isConnected())
        return;
    const QString accelerator = mAcceleratorModel->value();
    if (!accelerator.isNull())
        mConnectedAccelerator = accelerator;
}

void Mnu_Segment::handleWhatsThisChanged()
{
    doWhatsThisConnections();
}
