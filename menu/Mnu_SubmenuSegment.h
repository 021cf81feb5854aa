#ifndef MNU_SUBMENUSEGMENT_H
#define MNU_SUBMENUSEGMENT_H

#include "kelcore_export.h"

#include "Mnu_Segment.h"

// An item opening a nested menu, which has its own manager (owned).
class KELCORE_EXPORT Mnu_SubmenuSegment : public Mnu_Segment
{
    Q_OBJECT

public:
    // An empty submenu: its manager (with an empty menu) is made by the
    // owning menu's manager, so that code can fill it at once.
    explicit Mnu_SubmenuSegment(Mnu_Menu* menu);
    // Reads the element; its <Menu> child becomes the submenu.
    Mnu_SubmenuSegment(Mnu_Menu* menu, QDomElement* element);
    ~Mnu_SubmenuSegment() override;
    bool saveSegment(std::ostream& out, const QString& indent, Mnu_Segment::saveFormat format) override;

    int instantiate(Mnu_Manager* manager) override;
    int getVisibleItemCount() override;
    int getItemCount() override;
    void refreshState() override;
    Mnu_MenuID getIndexedID(int index) override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void dump(const QString& prefix) const override;

    Mnu_Manager* getSubmenuManager() const { return mSubmenuManagerP; }
    // Takes ownership of manager (destroying a previous one) and becomes its parent segment.
    void setSubmenuManager(Mnu_Manager* manager);

protected:
    bool parseSubElement(QDomElement* element) override;

private:
    Mnu_Manager* mSubmenuManagerP; // owned: replaced and deleted by setSubmenuManager, deleted with the segment
};

#endif
