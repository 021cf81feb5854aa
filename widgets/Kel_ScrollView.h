#ifndef KEL_SCROLLVIEW_H
#define KEL_SCROLLVIEW_H

#include "kelcore_export.h"

#include "Kel_WidgetConnectInterface.h"

#include <QScrollArea>

// A scroll area for forms: the widget a form puts inside it is scrolled and,
// by default, resized to the area's width. Connecting it connects the
// widgets it holds.
class KELCORE_EXPORT Kel_ScrollView : public QScrollArea, public Kel_WidgetConnectInterface
{
    Q_OBJECT

public:
    explicit Kel_ScrollView(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ScrollView() override;

    // Connects the scrolled widget and everything in it.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
};

#endif
