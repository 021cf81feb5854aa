#ifndef KEYMAP_TEST_SUPPORT_H
#define KEYMAP_TEST_SUPPORT_H

// Helpers shared by the keymap tests: a manager of its own per test (the
// process-wide one keeps its tables), the fixture folder as resource path,
// a keyboard of a chosen language and a stopped scheduler clock.
#include "Kel_KeyboardLanguage.h"
#include "Kel_KeymapMgr.h"
#include "Ost_Resource.h"
#include "TaskScheduler.h"
#include "TestSupport.h"

#include <QKeyEvent>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

namespace keymaptest {

inline QString dataDir()
{
    return testDataDir() + QStringLiteral("keymap/");
}

class TestKeymapMgr : public Kel_KeymapMgr
{
public:
    TestKeymapMgr() = default;
};

class KeymapTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Ost_Resource::setResourcePath(dataDir());
        Kel_KeyboardLanguage::setCurrentLanguageOverride(0);
        TaskScheduler::instance()->setManualClock(true);
        mgr.reset(new TestKeymapMgr);
    }
    void TearDown() override
    {
        mgr.reset();
        TaskScheduler::instance()->setManualClock(false);
        Kel_KeyboardLanguage::setCurrentLanguageOverride(-1);
        Ost_Resource::setResourcePath(QString());
    }

    // Loads an inline document into the default table; the document must load.
    void loadXml(const QString& xml, int lang = 0)
    {
        ASSERT_TRUE(mgr->loadFromXMLString(xml, lang)) << xml.toStdString();
    }
    // The mapping keys of the current table, in order.
    QStringList keys() { return mgr->KeyMap().keys(); }
    QString action(const QString& key, const QString& context, int lang = -1)
    {
        return mgr->lookup(QKeySequence(key), context, lang);
    }

    std::unique_ptr<TestKeymapMgr> mgr;
};

// A widget that offers its key presses to a keymap in its own context, as
// the library's widgets do, and counts what became of them.
class KeyProbe : public QWidget
{
public:
    KeyProbe(Kel_KeymapMgr* mgr, const QString& context, Mv_ConnectionEnvironment::ConstPtr env)
        : mMgrP(mgr), mContext(context), mEnv(env)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    int consumed = 0;
    int passedOn = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (mMgrP->handleAction(event, mContext, mEnv)) {
            ++consumed;
            event->accept();
        } else {
            ++passedOn;
            event->ignore();
        }
    }

private:
    Kel_KeymapMgr* mMgrP;
    QString mContext;
    Mv_ConnectionEnvironment::ConstPtr mEnv;
};

} // namespace keymaptest

#endif
