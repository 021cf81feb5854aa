#ifndef KEL_AUTOSIZETEXTEDIT_H
#define KEL_AUTOSIZETEXTEDIT_H

#include "kelcore_export.h"

#include "Dak_EditMenuCommander.h"
#include "Kel_AutoAlignTextEdit.h"
#include "Kel_IPointOfInterestFinder.h"

#include <QSize>
#include <QSizeF>

class QFocusEvent;
class QMouseEvent;
class QResizeEvent;

// A text edit whose preferred height is that of its contents, for in-place
// editors that grow line by line; it acts on the Edit menu's commands while
// it has the focus.
class KELCORE_EXPORT Kel_AutoSizeTextEdit : public Kel_AutoAlignTextEdit,
                                            public Dak_EditMenuCommander,
                                            public Kel_IPointOfInterestFinder
{
    Q_OBJECT

public:
    explicit Kel_AutoSizeTextEdit(QWidget* parent = nullptr, const char* name = nullptr);

    // The height of the laid-out document plus a small margin.
    int contentsHeight() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // With it set, a left click (without Shift) first drops the selection.
    void setClearSelectionOnClick(bool clear) { mClearSelectionOnClick = clear; }
    bool clearSelectionOnClick() const { return mClearSelectionOnClick; }

    bool findCommandStatus(unsigned int command, bool& enabled, QString& text) override;
    void obeyCommand(unsigned int command) override;

    // Matches the edit's object name (or an empty name).
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

signals:
    // The contents changed height and the size hint with it.
    void autoSized();

public slots:
    void docSizeChanged(const QSizeF& newsize);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    // Skipped while the Edit menu opens over the edit, which keeps its selection.
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool mClearSelectionOnClick;
};

#endif
