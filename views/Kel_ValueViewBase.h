#ifndef KEL_VALUEVIEWBASE_H
#define KEL_VALUEVIEWBASE_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_ViewBase.h"

#include <QColor>
#include <QFont>
#include <QString>

// The common part of views that show a model value as one line of text:
// drawing in the list font, the text colour, alignment and eliding, and the
// refresh on model notifications. Values are read again at every paint, so
// that one row view re-used for every row of a list (its listeners follow
// "$Row" through an index model) draws each row's own value.
class KELCORE_EXPORT Kel_ValueViewBase : public Kel_ViewBase
{
public:
    // Font-manager key of the font that list rows are drawn with.
    static const char* const kListFontKey;
    // The font stored under kListFontKey when the font manager has one,
    // else the application font (asking never adds the key).
    static QFont listFont();

    // While one lives, views without a font of their own draw in its font
    // instead of the list font: a list view paints its rows in its own font
    // this way. Scopes nest; the innermost one counts.
    class KELCORE_EXPORT InheritedFontScope
    {
    public:
        explicit InheritedFontScope(const QFont& font);
        ~InheritedFontScope();
        InheritedFontScope(const InheritedFontScope&) = delete;
        InheritedFontScope& operator=(const InheritedFontScope&) = delete;
        const QFont& font() const { return mFont; }

    private:
        QFont mFont;
        const InheritedFontScope* mOuterP;
    };

    Kel_ValueViewBase();
    Kel_ValueViewBase(const Kel_ValueViewBase& other);
    Kel_ValueViewBase& operator=(const Kel_ValueViewBase&) = delete;
    ~Kel_ValueViewBase() override;

    // The text as last read from the models (at the last notification or paint).
    QString getText() const { return mText; }
    // Reads the models again and answers the text the view shows now.
    QString currentText();
    // Whether the model of the shown value is connected; true for a view
    // without one (a fixed text).
    bool isBound() const;
    // The text colour as last read; invalid means the colour of the painter's pen.
    QColor getTextColor() const { return mTextColor; }

    // Placement of the text inside the view; left and vertically centred by default.
    void setAlignment(Qt::Alignment alignment) { mAlignment = alignment; }
    Qt::Alignment getAlignment() const { return mAlignment; }
    // A font of the view's own instead of the list font.
    void setFont(const QFont& font);
    // Back to the inherited font (see InheritedFontScope), else the list font.
    void unsetFont() { mHasOwnFont = false; }
    QFont getFont() const;

    // Re-reads the models and asks the parent to repaint the view; a
    // changed text is reported to accessibility clients.
    void updateAppearance();
    // Re-reads the models and draws the text inside the view.
    void drawContents(QPainter* painter, const QRect& rect) override;

protected:
    // Reads the bound models into the text and the colour (setText, setTextColor).
    virtual void readValues() = 0;
    void setText(const QString& text) { mText = text; }
    void setTextColor(const QColor& color) { mTextColor = color; }
    void setElideMode(Qt::TextElideMode mode) { mElideMode = mode; }
    // Sends every notification of property to updateAppearance. The
    // property of the value the view shows is made with kConnectAlways, so
    // that every connection (bound or not) makes the view read it again.
    // The first property given is taken for the shown value's (isBound).
    void refreshOnNotification(Kel_BoundPropertyBase& property);

private:
    QString mText;
    QColor mTextColor;
    Qt::Alignment mAlignment;
    Qt::TextElideMode mElideMode;
    bool mHasOwnFont;
    QFont mFont;
    const Kel_BoundPropertyBase* mShownPropertyP = nullptr; // a member of the derived view
};

#endif
