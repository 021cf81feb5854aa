#ifndef KEL_PLACARD_H
#define KEL_PLACARD_H

#include "kelcore_export.h"

#include <QFrame>
#include <QString>

class QLabel;

// A place holder: two centred lines of text, a prominent top line and a
// quieter bottom line, standing where content will be ("No clip selected" /
// "Choose a clip in a bin to inspect it"). A widget stack shows one while
// no tab is current. The fonts are the font manager's
// "FontSettings.Kel_Placard.TopLine.Font" and ".BottomLine.Font" when the
// application defines them.
class KELCORE_EXPORT Kel_Placard : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString topLine READ topLine WRITE setTopLine)
    Q_PROPERTY(QString bottomLine READ bottomLine WRITE setBottomLine)

public:
    explicit Kel_Placard(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Placard() override;

    QString topLine() const;
    void setTopLine(const QString& text);
    QString bottomLine() const;
    void setBottomLine(const QString& text);

private:
    QLabel* mTopLineP;    // owned by the widget
    QLabel* mBottomLineP; // owned by the widget
};

#endif
