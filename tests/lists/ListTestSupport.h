// A list view over a record array of clips, hosted by a scroll-area bridge
// in a shown window, driven with real mouse and key events.
#ifndef LISTTESTSUPPORT_H
#define LISTTESTSUPPORT_H

#include "Kel_BoundProperty.h"
#include "Kel_BridgeQScrollArea.h"
#include "Kel_HStackView.h"
#include "Kel_ListView.h"
#include "Kel_TextView.h"
#include "Mve_RecordArray.h"
#include "RecordingParent.h"
#include "TestSupport.h"

#include <QApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace listtest {

const int kRowHeight = 20;

// A row: the clip's name as text, draggable (when told) with a <Clip name=...>
// element and a 100 x 20 picture per row.
class ClipRow : public Kel_HStackView
{
public:
    explicit ClipRow(const QString& array)
    {
        auto* text = new Kel_TextView;
        text->setName(QStringLiteral("Name"));
        text->SetNameConnection(array + QStringLiteral(".name[$Row]"));
        text->setSize(QSize(100, kRowHeight));
        AddSubView(text);
        mName.setSpec(array + QStringLiteral(".name[$Row]"));
    }
    ClipRow(const ClipRow& other) : Kel_HStackView(other), draggable(other.draggable)
    {
        mName.setSpec(other.mName.spec());
    }
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> env) override
    {
        Kel_HStackView::makeConnections(env);
        mName.connect(env);
    }
    Kel_ViewInterface* clone() override { return new ClipRow(*this); }
    bool canDrag(const QPoint&) override { return draggable; }
    QDomElement getDragData(QPoint, QDomDocument& document, QPixmap& pixmap) override
    {
        QDomElement element = document.createElement(QStringLiteral("Clip"));
        element.setAttribute(QStringLiteral("name"), mName->value());
        pixmap = QPixmap(100, kRowHeight);
        pixmap.fill(Qt::red);
        return element;
    }
    QString currentName() const { return mName->value(); }

    bool draggable = false;

private:
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mName{nullptr, Kel_BoundPropertyBase::kConnectAlways};
};

// Keeps what would have been dragged instead of running Qt's drag loop.
class RecordingList : public Kel_ListView
{
public:
    int drags = 0;
    QString dragText;
    QPixmap dragImage;
    Qt::DropAction dragAction = Qt::IgnoreAction;

protected:
    void execDrag(QMimeData* data, const QPixmap& image, Qt::DropAction action) override
    {
        ++drags;
        dragText = data->text();
        dragImage = image;
        dragAction = action;
        delete data;
    }
};

// The list (rows "clip0" ...) in a 200 x visibleRows*20 scroll area.
class ListFixture : public ::testing::Test
{
protected:
    void build(int rows, Kel_ListView::SelectionMode mode, int visibleRows = 5)
    {
        clips.reset(new Mve_RecordArray(QStringLiteral("ListTest.Clips")));
        clips->addField<QString>(QStringLiteral("name"));
        clips->Publish();
        for (int i = 0; i < rows; ++i) {
            clips->appendRow();
            clips->setValue<QString>(i, QStringLiteral("name"), QStringLiteral("clip%1").arg(i));
        }
        window.reset(new QWidget);
        bridge = new Kel_BridgeQScrollArea(window.get());
        bridge->setObjectName(QStringLiteral("Bridge"));
        list = new RecordingList;
        bridge->setChild(list);
        row = new ClipRow(QStringLiteral("ListTest.Clips"));
        list->SetRowView(row);
        list->SetListConnectionName(QStringLiteral("ListTest.Clips"));
        list->setSelectionMode(mode);
        list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        bridge->resize(200, visibleRows * kRowHeight);
        window->resize(200, visibleRows * kRowHeight);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void TearDown() override
    {
        window.reset();
        clips.reset();
    }

    QWidget* content() const { return bridge->viewportWidget(); }
    // The content point in the middle of row (x 30).
    static QPoint rowPoint(long r) { return QPoint(30, int(r) * kRowHeight + kRowHeight / 2); }
    void click(long r, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(content(), button, modifiers, rowPoint(r));
    }
    void press(const QPoint& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mousePress(content(), Qt::LeftButton, modifiers, at);
    }
    void release(const QPoint& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseRelease(content(), Qt::LeftButton, modifiers, at);
    }
    // A move with the left button held.
    void drag(const QPoint& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent move(QEvent::MouseMove, to, content()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, modifiers);
        QApplication::sendEvent(content(), &move);
    }
    void key(int k, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { QTest::keyClick(content(), Qt::Key(k), modifiers); }

    QList<long> selection() const
    {
        QList<long> rows;
        for (long r : list->getSelectedList()->getValue())
            rows << r;
        return rows;
    }

    std::unique_ptr<Mve_RecordArray> clips;
    std::unique_ptr<QWidget> window;
    Kel_BridgeQScrollArea* bridge = nullptr;
    RecordingList* list = nullptr; // owned by the bridge
    ClipRow* row = nullptr;        // owned by the list
};

} // namespace listtest

#endif
