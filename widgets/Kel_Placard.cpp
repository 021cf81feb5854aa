#include "Kel_Placard.h"

#include "Kel_FontManager.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

// A line's label: the named font when the application set one, else the
// widget's font scaled by the given factor.
QLabel* makeLine(QWidget* placard, const char* fontKey, qreal scale, bool bold)
{
    auto* label = new QLabel(placard);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    const QString key = QString::fromLatin1(fontKey);
    QFont font = placard->font();
    if (Kel_FontManager::hasFont(key)) {
        font = Kel_FontManager::getFont(key);
    } else {
        if (font.pointSizeF() > 0)
            font.setPointSizeF(font.pointSizeF() * scale);
        font.setBold(bold);
    }
    label->setFont(font);
    return label;
}

} // namespace

Kel_Placard::Kel_Placard(QWidget* parent, const char* name)
    : QFrame(parent)
    , mTopLineP(makeLine(this, "FontSettings.Kel_Placard.TopLine.Font", 1.5, true))
    , mBottomLineP(makeLine(this, "FontSettings.Kel_Placard.BottomLine.Font", 1.0, false))
{
    setObjectName(QString::fromLatin1(name));
    auto* layout = new QVBoxLayout(this);
    layout->addStretch(1);
    layout->addWidget(mTopLineP);
    layout->addWidget(mBottomLineP);
    layout->addStretch(1);
    mBottomLineP->setForegroundRole(QPalette::PlaceholderText); // the palette's quieter colour
}

Kel_Placard::~Kel_Placard() = default;

QString Kel_Placard::topLine() const
{
    return mTopLineP->text();
}

void Kel_Placard::setTopLine(const QString& text)
{
    mTopLineP->setText(text);
}

QString Kel_Placard::bottomLine() const
{
    return mBottomLineP->text();
}

void Kel_Placard::setBottomLine(const QString& text)
{
    mBottomLineP->setText(text);
}
