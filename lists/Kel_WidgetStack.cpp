#include "Kel_WidgetStack.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_Logging_p.h"
#include "Kel_QtWidgetFactoryRegistry.h"
#include "Mvt_ArrayContainer_Notifications.h"
#include "Mvt_SimpleValue_Notifications.h"

#include <QApplication>
#include <QProxyStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const QString kCardName = QStringLiteral("Card View");

// One element of a tab array, read through a listener of its own.
template <class T>
T readTabElement(const char* field, long index, const Mv_ConnectionEnvironment::ConstPtr& environment)
{
    const QString name = QStringLiteral("$TabGroupBaseName.TabData.%1[%2]").arg(QLatin1String(field)).arg(index);
    const typename Mvt_SimpleValue<T>::Listener reader(name, environment);
    return reader.value(T());
}

} // namespace

Kel_WidgetStack::Kel_WidgetStack(QWidget* parent, const char* name, const QString& placardUIFileName)
    : QStackedWidget(parent)
    , mEnvironment(Mv_ConnectionEnvironment::blankEnvironment())
    , mPlacardUIFileName(placardUIFileName.toUtf8())
{
    setObjectName(QString::fromLatin1(name));
    mTabList.setSpec(QStringLiteral("$TabGroupBaseName.TabData"));
    mRowChanged.setSpec(QStringLiteral("$TabGroupBaseName.TabData.rowChanged"));
    mCurrentTab.setSpec(QStringLiteral("$TabGroupBaseName.TabData.currentUniqueID"));
    mTabShortName.setSpec(QStringLiteral("$TabGroupBaseName.TabData.tabShortName"));

    // While makeConnections connects them, refreshStack (which follows) does the work.
    mTabList.onMessage([this](const Mv_MessageInterface& message) {
        if (!mConnecting)
            handleTabListMessage(message);
    });
    mRowChanged.onMessage([this](const Mv_MessageInterface& message) {
        if (!mConnecting)
            handleRowChanged(message);
    });
    mCurrentTab.onNotify([this] {
        if (!mConnecting)
            handleCurrentTabChanged();
    });
}

Kel_WidgetStack::~Kel_WidgetStack() = default;

bool Kel_WidgetStack::addViewType(const QString& viewType, const QString& sourceName, bool isForm,
                                  const QString& initialFocusChild, const QString& focusProxyChild)
{
    mViewTypes.insert(viewType, ViewType{sourceName, isForm, initialFocusChild, focusProxyChild});
    return true;
}

void Kel_WidgetStack::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mEnvironment = environment ? environment : Mv_ConnectionEnvironment::blankEnvironment();
    if (mEnvironment->get(QStringLiteral("TabGroupBaseName")).isEmpty())
        qCDebug(lcKelWidgets, "Kel_WidgetStack::makeConnections, no TabGroupBaseName in the environment");
    const QPointer<Kel_WidgetStack> self(this);
    mConnecting = true;
    const bool connected
        = Kel_BoundPropertyBase::connectAll(mEnvironment, {&mTabList, &mRowChanged, &mCurrentTab, &mTabShortName});
    if (!self)
        return;
    mConnecting = false;
    if (connected)
        refreshStack();
}

long Kel_WidgetStack::entryId(long index) const
{
    return index >= 0 && index < entryCount() ? mEntries[size_t(index)].id : -1;
}

QWidget* Kel_WidgetStack::entryCard(long index) const
{
    return index >= 0 && index < entryCount() ? mEntries[size_t(index)].card.data() : nullptr;
}

long Kel_WidgetStack::getId(long index) const
{
    return readTabElement<long>("id", index, mEnvironment);
}

QString Kel_WidgetStack::getEnv(long index) const
{
    return readTabElement<QString>("env", index, mEnvironment);
}

QString Kel_WidgetStack::getViewType(long index) const
{
    return readTabElement<QString>("viewtype", index, mEnvironment);
}

int Kel_WidgetStack::findEntry(long id) const
{
    const auto found = std::find_if(mEntries.begin(), mEntries.end(), [id](const Entry& e) { return e.id == id; });
    return found == mEntries.end() ? -1 : int(found - mEntries.begin());
}

Mv_ConnectionEnvironment::Ptr Kel_WidgetStack::cardEnvironment(const QString& environment) const
{
    auto cardEnvironment = Mv_ConnectionEnvironment::create(mEnvironment);
    if (!environment.isEmpty())
        cardEnvironment->set(environment);
    return cardEnvironment;
}

void Kel_WidgetStack::refreshStack()
{
    const QPointer<Kel_WidgetStack> self(this);
    if (!mPlacardUIFileName.isEmpty() && (!mPlacardP || mPlacardLoadedFrom != mPlacardUIFileName)) {
        if (mPlacardP)
            QStackedWidget::removeWidget(mPlacardP);
        discardCard(mPlacardP);
        mPlacardP = Kel_CreateWidgetFromUILayout(QString::fromUtf8(mPlacardUIFileName), this, nullptr, true);
        mPlacardLoadedFrom = mPlacardP ? mPlacardUIFileName : QByteArray();
        if (!mPlacardP)
            qCDebug(lcKelWidgets, "Kel_WidgetStack::refreshStack, placard form %s not loaded", mPlacardUIFileName.constData());
    }
    // The placard may show models too.
    if (mPlacardP)
        Kel_ConnectionUtils::recursiveConnect(mPlacardP, mEnvironment);
    if (!self)
        return;

    // The list shrinks as i grows, so this removes the first, third, ...
    // cards and keeps the others: behaviour that existing owners see, kept as it is.
    for (long i = 0; self && i < entryCount(); ++i)
        removeWidget(i);

    for (long index = 0; self && mTabList.isConnected() && index < mTabList->size(); ++index)
        addWidget(index, getId(index), getViewType(index), getEnv(index));
    if (self)
        showCurrentTab();
}

bool Kel_WidgetStack::takeEntry(long index, const char* caller, QPointer<QWidget>* card)
{
    if (index < 0 || index >= entryCount()) {
        qCDebug(lcKelWidgets, "Kel_WidgetStack::%s, index %ld out of range", caller, index);
        return false;
    }
    *card = mEntries[size_t(index)].card;
    mEntries.erase(mEntries.begin() + index);
    if (*card)
        QStackedWidget::removeWidget(*card);
    return true;
}

void Kel_WidgetStack::discardCard(QWidget* card)
{
    if (!card)
        return;
    card->hide();
    // Later, so that a card may close its own tab from one of its handlers.
    card->deleteLater();
}

void Kel_WidgetStack::removeWidget(long index)
{
    QPointer<QWidget> card;
    if (!takeEntry(index, "removeWidget", &card))
        return;
    discardCard(card);
    if (mEntries.empty() && !isHidden()) {
        if (mPlacardP)
            raisePlacard();
        else
            hide();
    }
}

void Kel_WidgetStack::addWidget(long index, long id, QString viewType, QString environment)
{
    const QPointer<Kel_WidgetStack> self(this);
    QWidget* card = createWidget(viewType, environment);
    if (!self || !card)
        return;

    if (mTabShortName.isConnected()) {
        QString shortName = mTabShortName->element<QString>(index);
        // Dots separate the names of a widget path.
        if (!shortName.isEmpty())
            card->setObjectName(shortName.replace(QLatin1Char('.'), QLatin1Char('*')) + QLatin1Char(' ') + kCardName);
    }
    index = std::max(0L, std::min(index, entryCount()));
    mEntries.insert(mEntries.begin() + index, Entry{id, card, viewType});
    QStackedWidget::addWidget(card);
    if (isHidden())
        show();

    const auto type = mViewTypes.constFind(viewType);
    if (type != mViewTypes.constEnd() && !type->initialFocusChild.isEmpty()) {
        if (QWidget* child = card->findChild<QWidget*>(type->initialFocusChild))
            child->setFocus(Qt::OtherFocusReason);
    }
}

void Kel_WidgetStack::reinitializeWidget(long index)
{
    QPointer<QWidget> old;
    if (!takeEntry(index, "reinitializeWidget", &old))
        return;
    addWidget(index, getId(index), getViewType(index), getEnv(index));
    discardCard(old);
}

void Kel_WidgetStack::reconnectWidget(long index)
{
    if (index < 0 || index >= entryCount()) {
        qCDebug(lcKelWidgets, "Kel_WidgetStack::reconnectWidget, index %ld out of range", index);
        return;
    }
    Kel_ConnectionUtils::recursiveConnect(mEntries[size_t(index)].card, cardEnvironment(getEnv(index)));
}

QWidget* Kel_WidgetStack::createWidget(QString viewType, QString environment)
{
    auto* card = new QWidget(this);
    card->setObjectName(kCardName);
    card->setWindowTitle(kCardName);
    auto* layout = new QVBoxLayout(card);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);

    const auto type = mViewTypes.constFind(viewType);
    if (type == mViewTypes.constEnd() || type->sourceName.isEmpty()) {
        qCDebug(lcKelWidgets, "Kel_WidgetStack::createWidget, no source for view type %s", qPrintable(viewType));
    } else if (type->isForm) {
        Kel_CreateWidgetFromUILayout(type->sourceName, card, nullptr, true);
    } else {
        Kel_QtWidgetFactoryRegistry registry;
        if (QWidget* widget = registry.createWidget(type->sourceName, card, type->sourceName))
            layout->addWidget(widget);
    }

    const QPointer<QWidget> guard(card);
    Kel_ConnectionUtils::recursiveConnect(card, cardEnvironment(environment));
    if (!guard)
        return nullptr;

    const Mvt_SimpleValue<QProxyStyle*>::Listener styleOverride(QStringLiteral("PellaTool.StyleOverride"),
                                                               Mv_ConnectionEnvironment::blankEnvironment());
    QProxyStyle* style = nullptr;
    if (styleOverride.get(style) && style) {
        card->setStyle(style);
        for (QWidget* child : card->findChildren<QWidget*>())
            child->setStyle(style);
    }
    return card;
}

void Kel_WidgetStack::raiseWidget(long id)
{
    const int index = findEntry(id);
    QWidget* card = index < 0 ? nullptr : mEntries[size_t(index)].card.data();
    if (!card)
        return;
    setCurrentWidget(card);
    // The proxy belongs to the raised card: one of a hidden card would take the focus away.
    const auto type = mViewTypes.constFind(mEntries[size_t(index)].viewType);
    QWidget* proxy = nullptr;
    if (type != mViewTypes.constEnd() && !type->focusProxyChild.isEmpty())
        proxy = card->findChild<QWidget*>(type->focusProxyChild);
    setFocusProxy(proxy);
}

void Kel_WidgetStack::raisePlacard()
{
    if (!mPlacardP)
        return;
    setCurrentWidget(mPlacardP);
    setFocusProxy(nullptr);
}

void Kel_WidgetStack::showCurrentTab()
{
    long id = 0;
    if (mCurrentTab.isConnected() && mCurrentTab->get(id)) {
        const int index = findEntry(id);
        if (index >= 0 && mEntries[size_t(index)].card) {
            raiseWidget(id);
            return;
        }
    }
    raisePlacard();
}

void Kel_WidgetStack::handleCurrentTabChanged()
{
    long id = 0;
    const int index = mCurrentTab.isConnected() && mCurrentTab->get(id) ? findEntry(id) : -1;
    QWidget* card = index < 0 ? nullptr : mEntries[size_t(index)].card.data();
    if (!card) {
        raisePlacard();
        return;
    }
    QWidget* current = currentWidget();
    if (!current || current == mPlacardP || current == card) {
        raiseWidget(id);
        return;
    }
    const QPointer<QWidget> focused = QApplication::focusWidget();
    const bool focusInCard = focused && current->isAncestorOf(focused);
    if (focusInCard && current->parentWidget())
        current->parentWidget()->setFocus(Qt::OtherFocusReason);
    current->hide();
    if (focused && !focused->hasFocus())
        focused->setFocus(Qt::OtherFocusReason);
    raiseWidget(id);
    // The focus was in the card that went: it goes on in the new card.
    if (focusInCard && focusProxy())
        focusProxy()->setFocus(Qt::OtherFocusReason);
}

void Kel_WidgetStack::handleRowChanged(const Mv_MessageInterface& message)
{
    if (!message.is<Mvt_SimpleValue_Notifications::MsgValueChanged>())
        return; // being connected is no change of a tab
    long index = -1;
    mRowChanged->get(index);
    if (index < 0 || index >= entryCount())
        return;
    const QPointer<Kel_WidgetStack> self(this);
    reinitializeWidget(index);
    if (self && index < entryCount())
        raiseWidget(mEntries[size_t(index)].id);
}

void Kel_WidgetStack::handleTabsReplaced(long first, long removedEnd, long insertedCount)
{
    const QPointer<Kel_WidgetStack> self(this);
    const long removedCount = removedEnd - first;
    if (removedCount == insertedCount) {
        for (long i = first; self && i < removedEnd && i < entryCount(); ++i) {
            if (mEntries[size_t(i)].id == getId(i))
                reinitializeWidget(i);
            else
                qCDebug(lcKelWidgets, "Kel_WidgetStack::tabsReplaced, the tab at %ld has another id", i);
        }
    } else {
        // A removal, an insertion, or both: the old tabs go, the new ones come.
        for (long k = 0; self && k < removedCount; ++k)
            removeWidget(first);
        for (long k = 0; self && k < insertedCount; ++k)
            addWidget(first + k, getId(first + k), getViewType(first + k), getEnv(first + k));
    }
    if (self)
        showCurrentTab();
}

void Kel_WidgetStack::removeAllCards()
{
    const QPointer<Kel_WidgetStack> self(this);
    while (self && entryCount() > 0)
        removeWidget(0);
}

void Kel_WidgetStack::handleTabListMessage(const Mv_MessageInterface& message)
{
    typedef Mvt_ArrayContainer_Notifications N;
    if (const auto* replaced = message.as<N::MsgElementsReplaced>()) {
        handleTabsReplaced(replaced->first(), replaced->removedEnd(), replaced->insertedCount());
        return;
    }
    if (const auto* moved = message.as<N::MsgElementsMoved>()) {
        const long from = moved->from();
        const long to = moved->to();
        if (from >= 0 && from < entryCount() && to >= 0 && to < entryCount() && from != to) {
            Entry entry = mEntries[size_t(from)];
            mEntries.erase(mEntries.begin() + from);
            mEntries.insert(mEntries.begin() + to, entry);
        }
        return;
    }
    if (message.is<N::MsgElementValueChanged>())
        return; // a tab's contents: rowChanged tells when its card must be remade
    // Connected or gone: without tabs no cards; with new ones, new cards.
    const QPointer<Kel_WidgetStack> self(this);
    removeAllCards();
    if (self && mTabList.isConnected())
        refreshStack();
    else if (self)
        showCurrentTab();
}
