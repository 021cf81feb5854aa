#ifndef MNU_SEGMENT_H
#define MNU_SEGMENT_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Mnu_MenuID.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mvt_SimpleValue.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <iosfwd>
#include <memory>

class Mnu_Manager;
class Mnu_Menu;
class QDomElement;

// One run of items in a menu, bound to models by connection names. Each kind
// expands into zero or more items every time its menu is instantiated and
// reacts when one of its items is chosen. The common fields (text,
// accelerator, icon, visible, enabled, what's-this) live here.
class KELCORE_EXPORT Mnu_Segment : public QObject
{
    Q_OBJECT

public:
    // The two output forms of the writers: an XML menu file or source code.
    enum saveFormat { kSaveXml = 0, kSaveSource = 1 };

    ~Mnu_Segment() override;

    // Makes the segment kind named by the element's tag; null (with a debug
    // message) for a tag that is not a segment.
    static Mnu_Segment* SegmentFactory(Mnu_Menu* menu, QDomElement* element);

    // Writes the segment as XML or as source code (kSaveXml, kSaveSource;
    // any other format writes nothing). The base writes nothing and answers false.
    virtual bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format);
    // Writes the fields every kind shares, each only when not empty.
    virtual bool emitCommonTags(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format);
    // Makes the segment's items in manager; answers how many were made. The
    // base only computes visible, enabled, displayed text and accelerator.
    virtual int instantiate(Mnu_Manager* manager);
    // Items made at the last instantiation, or 0 while hidden.
    virtual int getVisibleItemCount() = 0;
    // Items the segment would make if visible.
    virtual int getItemCount() = 0;
    // Called when the user chose one of the segment's items.
    virtual void itemActivated(Mnu_MenuID id);
    virtual bool isSeparator();
    // Recomputes the states from the models without making items.
    virtual void refreshState();
    // Identifier of the index-th item of the last instantiation.
    virtual Mnu_MenuID getIndexedID(int index);
    // Activates an item as if chosen; false for kinds that do not support it.
    virtual bool activate(Mnu_MenuID id);
    // The enabled state; with refresh, recomputed from the models first.
    virtual bool isEnabled(bool refresh);
    virtual QString getName() const;
    virtual void setName(const QString& name);
    virtual QString getItemText() const;
    virtual void setItemText(const QString& text);
    // The text chosen by the last instantiation (model text or static text).
    virtual QString getDisplayedText() const;
    virtual QString getTextConnectionName() const;
    virtual void setTextConnectionName(const QString& name);
    virtual QString getAccelerator() const;
    virtual void setAccelerator(const QString& accelerator);
    virtual QString getAcceleratorConnectionName() const;
    virtual void setAcceleratorConnectionName(const QString& name);
    virtual QString getIconName() const;
    // Stores the name and reads the icon file under the resource path.
    virtual void setIconName(const QString& name);
    virtual QString getEnableConnectionName() const;
    virtual void setEnableConnectionName(const QString& name);
    virtual QString getVisibleConnectionName() const;
    virtual void setVisibleConnectionName(const QString& name);
    virtual QString getWhatsThisConnectionName() const;
    virtual void setWhatsThisConnectionName(const QString& name);
    virtual QString getWhyDisabledConnectionName() const;
    virtual void setWhyDisabledConnectionName(const QString& name);
    virtual QString getWhatsThisText() const;
    virtual void setWhatsThisText(const QString& text);
    // Connects one listener per non-empty connection name (a null
    // environment means the blank one).
    virtual void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    virtual void dump(const QString& prefix) const;

protected:
    // Reads every child of element through parseSubElement; always true.
    virtual bool xmlParser(QDomElement* element);
    // Reads one common child; false for a tag it does not know.
    virtual bool parseSubElement(QDomElement* element);
    // Reads the icon file into the segment's icon data.
    virtual bool readIconFile();
    // Chooses the effective what's-this text from the models and texts.
    virtual void doWhatsThisConnections();

public:
    Mnu_Menu* getMenu() const { return mMenuP; }
    Mnu_Manager* getManager() const { return mManagerP; }
    bool isVisible() const { return mVisible; }
    // The accelerator chosen by the last instantiation or refresh.
    QString getEffectiveAccelerator() const { return mEffectiveAccelerator; }
    QString getEffectiveWhatsThisText() const { return mEffectiveWhatsThisText; }
    const unsigned char* getIconData() const { return mIconDataP.get(); }
    int getIconDataLength() const { return mIconDataLength; }
    // Recomputes visible, enabled, displayed text and accelerator only,
    // without the narrowing that a kind adds in refreshState.
    void refreshCommonState() { Mnu_Segment::instantiate(mManagerP); }

protected:
    explicit Mnu_Segment(Mnu_Menu* menu);

    typedef Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> StringProperty;
    typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;

    // Writes a segment in the frame every kind but radio items shares:
    // opening, common tags, the kind's own lines (ownLines, given the inner
    // indent), closing. className is the kind's class, "Mnu_" included;
    // construction replaces the generated "new className(menu, NULL)" line.
    bool saveFramedSegment(std::ostream& out, const QString& indent, saveFormat format, const char* xmlTag,
                           const char* className, const std::function<void(const QString&)>& ownLines,
                           const QStringList& construction = QStringList());

    // Header line shared by the dumps of every kind.
    void dumpSegmentInformation(const QString& prefix, const char* className) const;
    // The common item settings: enabled state and what's-this text.
    void applyCommonItemSettings(Mnu_MenuID id);

    Mnu_Menu* mMenuP;
    Mnu_Manager* mManagerP;
    QString mName;
    QString mText;
    QString mDisplayedText;
    QString mConnectedText;
    QString mAccelerator;
    QString mEffectiveAccelerator;
    QString mConnectedAccelerator;
    QString mIconName;
    QString mWhatsThisText;
    std::unique_ptr<unsigned char[]> mIconDataP;
    int mIconDataLength;
    bool mEnabled;
    bool mVisible;
    // Visible and enabled are read at each instantiation; the others keep
    // what their models last said.
    StringProperty mTextModel{this};
    StringProperty mAcceleratorModel{this};
    BoolProperty mVisibleModel{this};
    BoolProperty mEnableModel{this};
    StringProperty mWhatsThisModel{this};
    StringProperty mWhyDisabledModel{this};
    QString mEffectiveWhatsThisText;

private:
    void handleTextChanged();
    void handleAcceleratorChanged();
    void handleWhatsThisChanged();
};

#endif
