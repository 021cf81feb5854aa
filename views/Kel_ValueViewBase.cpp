#include "Kel_ValueViewBase.h"

#include "Kel_FontManager.h"
#include "Kel_ViewAccessibility.h"

#include <QAccessible>

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>

namespace {

// Room between the text and the view's left and right edges.
const int kTextMargin = 2;

} // namespace

namespace {

// The innermost live InheritedFontScope (painting happens on the GUI thread only).
const Kel_ValueViewBase::InheritedFontScope* sInheritedFontScopeP = nullptr;

} // namespace

Kel_ValueViewBase::InheritedFontScope::InheritedFontScope(const QFont& font)
    : mFont(font), mOuterP(sInheritedFontScopeP)
{
    sInheritedFontScopeP = this;
}

Kel_ValueViewBase::InheritedFontScope::~InheritedFontScope()
{
    sInheritedFontScopeP = mOuterP;
}

const char* const Kel_ValueViewBase::kListFontKey = "FontSettings.Kel_ListView.Font";

QFont Kel_ValueViewBase::listFont()
{
    const QString key = QString::fromLatin1(kListFontKey);
    return Kel_FontManager::hasFont(key) ? Kel_FontManager::getFont(key) : QApplication::font();
}

Kel_ValueViewBase::Kel_ValueViewBase()
    : Kel_ViewBase(), mText(), mTextColor(), mAlignment(Qt::AlignLeft | Qt::AlignVCenter), mElideMode(Qt::ElideNone),
      mHasOwnFont(false), mFont()
{
}

Kel_ValueViewBase::Kel_ValueViewBase(const Kel_ValueViewBase& other)
    : Kel_ViewBase(other), mText(), mTextColor(), mAlignment(other.mAlignment), mElideMode(other.mElideMode),
      mHasOwnFont(other.mHasOwnFont), mFont(other.mFont)
{
}

Kel_ValueViewBase::~Kel_ValueViewBase() = default;

void Kel_ValueViewBase::setFont(const QFont& font)
{
    mFont = font;
    mHasOwnFont = true;
}

QFont Kel_ValueViewBase::getFont() const
{
    if (mHasOwnFont)
        return mFont;
    return sInheritedFontScopeP ? sInheritedFontScopeP->font() : listFont();
}

QString Kel_ValueViewBase::currentText()
{
    readValues();
    return mText;
}

bool Kel_ValueViewBase::isBound() const
{
    return !mShownPropertyP || mShownPropertyP->isConnected();
}

void Kel_ValueViewBase::updateAppearance()
{
    if (!Kel_ViewAccessibility::reportsEvents()) {
        readValues();
    } else {
        const QString before = mText;
        readValues();
        if (mText != before)
            Kel_ViewAccessibility::notifyValueChanged(this, mText);
    }
    sendAllBitsChanged();
}

void Kel_ValueViewBase::drawContents(QPainter* painter, const QRect&)
{
    readValues();
    if (!painter || mText.isEmpty())
        return;
    painter->save();
    painter->setFont(getFont());
    if (mTextColor.isValid())
        painter->setPen(mTextColor);
    const QRect box = getLocalDrawingRect().adjusted(kTextMargin, 0, -kTextMargin, 0);
    QString text = mText;
    if (mElideMode != Qt::ElideNone)
        text = painter->fontMetrics().elidedText(text, mElideMode, box.width());
    painter->drawText(box, int(mAlignment) | Qt::TextSingleLine, text);
    painter->restore();
}

void Kel_ValueViewBase::refreshOnNotification(Kel_BoundPropertyBase& property)
{
    if (!mShownPropertyP)
        mShownPropertyP = &property;
    // Any notification (value changed, connected or disconnected) leads to a full re-read.
    property.onNotify([this] { updateAppearance(); });
}
