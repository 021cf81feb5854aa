#include "Kel_DesignerCustomWidget.h"

#include "Kel_FactoryEntryInterface.h"

#include <QMetaProperty>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QScrollArea>
#include <QWidget>
#include <memory>

namespace {

// Stock captions of Designer's widget box, most specific class first.
struct Caption
{
    const char* qtClass;
    const char* property;
    const char* text;
};
const Caption kCaptions[] = {
    {"QCheckBox", "text", "CheckBox"},
    {"QRadioButton", "text", "RadioButton"},
    {"QCommandLinkButton", "text", "CommandLinkButton"},
    {"QPushButton", "text", "PushButton"},
    {"QToolButton", "text", "..."},
    {"QAbstractButton", "text", "PushButton"},
    {"QLabel", "text", "TextLabel"},
    {"QGroupBox", "title", "GroupBox"},
};

// Sizes for widgets whose size hint says little (a plain QWidget has none).
const QSize kMinimumSize(20, 20);
const QSize kPlainWidgetSize(100, 30);
const QSize kContainerSize(200, 150);

const int kIconSize = 22;
const QColor kInk(40, 60, 90);
const QColor kPaper(250, 250, 252);
// Every icon of the group carries a corner mark in the library's colour.
const QColor kMark(0, 140, 150);

enum class Glyph { CheckBox, Radio, Button, Label, Field, Slider, Combo, List, Container, Generic };

Glyph glyphFor(const QWidget* w, bool container)
{
    if (w->inherits("QCheckBox"))
        return Glyph::CheckBox;
    if (w->inherits("QRadioButton"))
        return Glyph::Radio;
    if (w->inherits("QAbstractButton"))
        return Glyph::Button;
    if (w->inherits("QLabel"))
        return Glyph::Label;
    if (w->inherits("QLineEdit") || w->inherits("QTextEdit") || w->inherits("QPlainTextEdit")
        || w->inherits("QAbstractSpinBox"))
        return Glyph::Field;
    if (w->inherits("QAbstractSlider"))
        return Glyph::Slider;
    if (w->inherits("QComboBox"))
        return Glyph::Combo;
    if (w->inherits("QAbstractItemView"))
        return Glyph::List;
    if (container || w->inherits("QScrollArea") || w->inherits("QGroupBox"))
        return Glyph::Container;
    return Glyph::Generic;
}

QIcon drawIcon(Glyph glyph)
{
    QPixmap pixmap(kIconSize, kIconSize);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    QPen pen(kInk, 1.5);
    p.setPen(pen);
    p.setBrush(kPaper);
    switch (glyph) {
    case Glyph::CheckBox:
        p.drawRect(QRectF(3.5, 3.5, 14, 14));
        p.setPen(QPen(kInk, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF({QPointF(6.5, 10.5), QPointF(9.5, 14), QPointF(15, 6.5)}));
        break;
    case Glyph::Radio:
        p.drawEllipse(QRectF(3.5, 3.5, 14, 14));
        p.setBrush(kInk);
        p.drawEllipse(QRectF(7.5, 7.5, 6, 6));
        break;
    case Glyph::Button:
        p.setBrush(QColor(225, 230, 238));
        p.drawRoundedRect(QRectF(1.5, 5.5, 19, 11), 3, 3);
        p.drawLine(QPointF(6, 11), QPointF(16, 11));
        break;
    case Glyph::Label: {
        QFont font = p.font();
        font.setPixelSize(15);
        font.setBold(true);
        p.setFont(font);
        p.drawText(QRect(0, 0, kIconSize - 2, kIconSize), Qt::AlignCenter, QStringLiteral("A"));
        break;
    }
    case Glyph::Field:
        p.drawRect(QRectF(1.5, 5.5, 19, 11));
        p.drawLine(QPointF(5.5, 8), QPointF(5.5, 14));
        break;
    case Glyph::Slider:
        p.drawLine(QPointF(2, 11), QPointF(20, 11));
        p.setBrush(QColor(225, 230, 238));
        p.drawRect(QRectF(8.5, 5.5, 5, 11));
        break;
    case Glyph::Combo:
        p.drawRect(QRectF(1.5, 5.5, 19, 11));
        p.setBrush(kInk);
        p.drawPolygon(QPolygonF({QPointF(13, 9.5), QPointF(18, 9.5), QPointF(15.5, 13)}));
        break;
    case Glyph::List:
        p.drawRect(QRectF(2.5, 2.5, 17, 17));
        for (int y = 7; y <= 15; y += 4)
            p.drawLine(QPointF(5, y), QPointF(17, y));
        break;
    case Glyph::Container:
        p.drawRect(QRectF(1.5, 1.5, 19, 19));
        p.setPen(QPen(kInk, 1, Qt::DashLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRectF(5.5, 5.5, 11, 11));
        break;
    case Glyph::Generic:
        p.drawRect(QRectF(2.5, 2.5, 17, 17));
        p.drawLine(QPointF(6, 7), QPointF(16, 7));
        p.drawLine(QPointF(6, 11), QPointF(13, 11));
        p.drawLine(QPointF(6, 15), QPointF(15, 15));
        break;
    }
    p.setPen(Qt::NoPen);
    p.setBrush(kMark);
    p.drawEllipse(QRectF(kIconSize - 7, kIconSize - 7, 6, 6));
    return QIcon(pixmap);
}

// The properties the library's classes add above their Qt base.
QStringList ownPropertiesOf(const QMetaObject* meta)
{
    QStringList names;
    for (; meta && !QByteArray(meta->className()).startsWith('Q'); meta = meta->superClass()) {
        QStringList level;
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
            level << QString::fromLatin1(meta->property(i).name());
        names = level + names;
    }
    return names;
}

} // namespace

Kel_DesignerCustomWidget::Kel_DesignerCustomWidget(const QString& className, Kel_FactoryEntryInterface* entry,
                                                   QObject* parent)
    : QObject(parent), mClassName(className), mEntryP(entry), mInitialized(false)
{
}

QString Kel_DesignerCustomWidget::name() const
{
    return mClassName;
}

QString Kel_DesignerCustomWidget::group() const
{
    return QStringLiteral("KelCore");
}

QString Kel_DesignerCustomWidget::toolTip() const
{
    return mEntryP->getToolTip();
}

QString Kel_DesignerCustomWidget::whatsThis() const
{
    // A new user needs most to know which properties name the models.
    const QStringList& properties = traits().ownProperties;
    if (properties.isEmpty())
        return mEntryP->getWhatsThis();
    return mEntryP->getWhatsThis() + QStringLiteral("\n\nProperties naming its models: ")
        + properties.join(QStringLiteral(", ")) + QLatin1Char('.');
}

QString Kel_DesignerCustomWidget::includeFile() const
{
    return mEntryP->getIncludeFile();
}

QIcon Kel_DesignerCustomWidget::icon() const
{
    return traits().icon;
}

bool Kel_DesignerCustomWidget::isContainer() const
{
    return mEntryP->isContainer();
}

QWidget* Kel_DesignerCustomWidget::createWidget(QWidget* parent)
{
    // Designer gives the widget its object name afterwards. An entry that
    // cannot make its widget (a form file that is missing) still gets a
    // placeholder, since the designer cannot cope with none.
    QWidget* widget = mEntryP->create(parent, QString(), false);
    return widget ? widget : new QWidget(parent);
}

bool Kel_DesignerCustomWidget::isInitialized() const
{
    return mInitialized;
}

void Kel_DesignerCustomWidget::initialize(QDesignerFormEditorInterface*)
{
    mInitialized = true;
}

QString Kel_DesignerCustomWidget::domXml() const
{
    const Traits& t = traits();
    QString objectName = mClassName;
    if (!objectName.isEmpty())
        objectName[0] = objectName[0].toLower();
    QString body = QStringLiteral("  <property name=\"geometry\">\n   <rect><x>0</x><y>0</y>"
                                  "<width>%1</width><height>%2</height></rect>\n  </property>\n")
                       .arg(t.size.width())
                       .arg(t.size.height());
    if (!t.captionProperty.isEmpty())
        body += QStringLiteral("  <property name=\"%1\">\n   <string>%2</string>\n  </property>\n")
                    .arg(t.captionProperty, t.caption.toHtmlEscaped());
    if (t.scrollArea) {
        // Children dropped on a scroll area go to its contents page.
        body += QStringLiteral("  <property name=\"widgetResizable\">\n   <bool>true</bool>\n  </property>\n"
                               "  <widget class=\"QWidget\" name=\"%1Contents\"/>\n")
                    .arg(objectName);
    }
    return QStringLiteral("<ui language=\"c++\">\n <widget class=\"%1\" name=\"%2\">\n%3 </widget>\n</ui>\n")
        .arg(mClassName, objectName, body);
}

const Kel_DesignerCustomWidget::Traits& Kel_DesignerCustomWidget::traits() const
{
    if (mHasTraits)
        return mTraits;
    mHasTraits = true;
    const bool container = mEntryP->isContainer();
    std::unique_ptr<QWidget> sample(mEntryP->create(nullptr, QString(), false));
    if (!sample) {
        mTraits.size = container ? kContainerSize : kPlainWidgetSize;
        mTraits.icon = drawIcon(container ? Glyph::Container : Glyph::Generic);
        return mTraits;
    }
    for (const Caption& caption : kCaptions) {
        if (sample->inherits(caption.qtClass)) {
            mTraits.captionProperty = QString::fromLatin1(caption.property);
            mTraits.caption = QString::fromLatin1(caption.text);
            sample->setProperty(caption.property, mTraits.caption);
            break;
        }
    }
    const QSize hint = sample->sizeHint();
    if (container)
        mTraits.size = kContainerSize.expandedTo(hint);
    else
        mTraits.size = hint.isValid() ? hint.expandedTo(kMinimumSize) : kPlainWidgetSize;
    mTraits.icon = drawIcon(glyphFor(sample.get(), container));
    mTraits.scrollArea = qobject_cast<QScrollArea*>(sample.get()) != nullptr;
    mTraits.ownProperties = ownPropertiesOf(sample->metaObject());
    return mTraits;
}
