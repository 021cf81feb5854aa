#ifndef KEL_WIDGETSTACK_H
#define KEL_WIDGETSTACK_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Array.h"
#include "Mvt_ArrayContainer.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QMap>
#include <QPointer>
#include <QStackedWidget>
#include <QString>
#include <vector>

// A stack of cards, one per tab of a tab model, showing the card of the
// current tab. The tab models live under the name that the environment
// variable TabGroupBaseName gives: "<base>.TabData" (the tabs, with the
// element arrays id, env, viewtype and tabShortName), "<base>.TabData.
// currentUniqueID" (the id of the tab to show) and "<base>.TabData.
// rowChanged" (a tab whose contents changed). Each tab's view type says how
// its card is built (addViewType): from a form or a library widget class,
// connected in a child environment that the tab's env text fills in. A
// placard, loaded from its own form, stands in while no tab is current.
class KELCORE_EXPORT Kel_WidgetStack : public QStackedWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray placardUIFileName READ getPlacardUIFileName WRITE setPlacardUIFileName)

public:
    // placardUIFileName: the form of the placard (as setPlacardUIFileName).
    explicit Kel_WidgetStack(QWidget* parent = nullptr, const char* name = nullptr,
                             const QString& placardUIFileName = QString());
    ~Kel_WidgetStack() override;

    // The placard's form name under Forms/; loaded at the next refreshStack.
    void setPlacardUIFileName(const QByteArray& formName) { mPlacardUIFileName = formName; }
    QByteArray getPlacardUIFileName() const { return mPlacardUIFileName; }
    // The placard widget, null until loaded.
    QWidget* placard() const { return mPlacardP; }

    // How cards of viewType are built: the form (isForm) or library widget
    // class sourceName, the child that takes the focus when the card is made,
    // and the child that is the stack's focus proxy while the card is raised.
    // Replaces an earlier record of the same type; always true.
    bool addViewType(const QString& viewType, const QString& sourceName, bool isForm,
                     const QString& initialFocusChild = QString(), const QString& focusProxyChild = QString());

    // Connects the tab models named from TabGroupBaseName, then refreshStack().
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Number of cards, and the tab id and card of each, in tab order.
    long entryCount() const { return long(mEntries.size()); }
    long entryId(long index) const;
    QWidget* entryCard(long index) const;

    // Loads the placard, removes cards (every other one: the loop counts up
    // while the list shrinks), makes a card for every tab and raises the
    // current tab's card, or the placard.
    virtual void refreshStack();
    // Removes and deletes the card at index; the placard stands in (or the
    // stack hides, without one) when the last card goes.
    virtual void removeWidget(long index);
    // Makes a card for the tab and inserts it at index (at the end when
    // there are fewer cards); shows the stack.
    virtual void addWidget(long index, long id, QString viewType, QString environment);
    // Replaces the card at index with a fresh one for the tab's current data.
    virtual void reinitializeWidget(long index);
    // Connects the card at index again, in a new environment from the tab's env text.
    virtual void reconnectWidget(long index);
    // A new card of viewType, connected in a child environment filled from
    // environment ("Name=Value; ..."); an empty card for unknown types.
    virtual QWidget* createWidget(QString viewType, QString environment);
    // Makes the card of the tab with this id current, with its focus proxy.
    virtual void raiseWidget(long id);
    virtual void raisePlacard();

private:
    struct Entry
    {
        long id;
        QPointer<QWidget> card;
        QString viewType;
    };
    struct ViewType
    {
        QString sourceName;
        bool isForm;
        QString initialFocusChild;
        QString focusProxyChild;
    };

    // One element of the tab list, read on demand.
    long getId(long index) const;
    QString getEnv(long index) const;
    QString getViewType(long index) const;

    // Takes the entry at index out of the list, and its card out of the
    // stack; false (and a debug message naming caller) when there is none.
    bool takeEntry(long index, const char* caller, QPointer<QWidget>* card);
    // Hides a card taken out and deletes it on the next turn of the event loop.
    static void discardCard(QWidget* card);
    Mv_ConnectionEnvironment::Ptr cardEnvironment(const QString& environment) const;
    int findEntry(long id) const;
    // Raises the current tab's card, or the placard when it has none.
    void showCurrentTab();
    void handleTabListMessage(const Mv_MessageInterface& message);
    void handleCurrentTabChanged();
    void handleRowChanged(const Mv_MessageInterface& message);
    void handleTabsReplaced(long first, long removedEnd, long insertedCount);
    // Removes card 0 until none is left.
    void removeAllCards();

    typedef Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> LongProperty;
    typedef Mvt_Array<Mvt_SimpleValue<QString>> StringArray;

    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mTabList{this};
    LongProperty mRowChanged{this};
    LongProperty mCurrentTab{this};
    Kel_BoundProperty<StringArray::Listener> mTabShortName{this};

    // The environment of the last makeConnections (the blank one before).
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
    QByteArray mPlacardUIFileName;
    QPointer<QWidget> mPlacardP;
    QByteArray mPlacardLoadedFrom;
    std::vector<Entry> mEntries;
    QMap<QString, ViewType> mViewTypes;
    // Set while makeConnections connects the listeners: refreshStack follows.
    bool mConnecting = false;
};

#endif
