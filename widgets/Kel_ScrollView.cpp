#include "Kel_ScrollView.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_WhatsThis.h"

Kel_ScrollView::Kel_ScrollView(QWidget* parent, const char* name) : QScrollArea(parent)
{
    setObjectName(QString::fromLatin1(name));
    setWidgetResizable(true);
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ScrollView");
}

Kel_ScrollView::~Kel_ScrollView() = default;

void Kel_ScrollView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
}
