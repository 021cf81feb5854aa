#ifndef MNU_COMMANDSEGMENT_H
#define MNU_COMMANDSEGMENT_H

#include "kelcore_export.h"

#include "Mnu_Segment.h"

#include <memory>

class Uip_ParseNode;

// A menu command: one item that runs an action script once the menu has
// closed. It is enabled only while its script is connected to its models.
class KELCORE_EXPORT Mnu_CommandSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    Mnu_CommandSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_CommandSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    // Queues the script (delayed-action queue, else a zero-time timer).
    void itemActivated(Mnu_MenuID id) override;
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    bool activate(Mnu_MenuID id) override;
    // Parses and connects the script in environment, which is kept for running it.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    QString getActionScript() const { return mActionScript; }
    // A new script replaces the parse tree; once connected it is connected again at once.
    void setActionScript(const QString& script);

public slots:
    // Runs the script now.
    void itemActivatedTimer();

protected:
    bool parseSubElement(QDomElement* element) override;

private:
    void connectScript();

    std::unique_ptr<Uip_ParseNode> mParseTreeP;
    QString mActionScript;
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
    Mnu_MenuID mItemID;
    bool mConnected;
};

#endif
