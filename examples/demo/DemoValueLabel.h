#ifndef DEMOVALUELABEL_H
#define DEMOVALUELABEL_H

#include "Mv_ConnectionEnvironment.h"
#include "Mv_ListenerBase.h"
#include "Mv_Variant.h"
#include "Mvt_SimpleValue.h"

#include <QLabel>

// A label that shows one published model's value as text and follows its
// changes, the way any application code can watch a model.
class DemoValueLabel : public QLabel
{
public:
    DemoValueLabel(const QString& modelName, QWidget* parent) : QLabel(parent), mListener(modelName)
    {
        mListener.setReceiveMessageCB([this](const Mv_MessageInterface&) { refresh(); });
        mListener.connect(Mv_ConnectionEnvironment::blankEnvironment());
    }

private:
    void refresh()
    {
        Mv_Variant v;
        if (mListener.SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&v), false))
            setText(v.toDebugString());
        else
            setText(tr("(not published)"));
    }
    Mv_ListenerBase mListener;
};

#endif
