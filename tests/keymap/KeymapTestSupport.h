#ifndef KEYMAP_TEST_SUPPORT_H
#define KEYMAP_TEST_SUPPORT_H

// A manager of its own per test (the process-wide one keeps its tables), the
// fixture folder as resource path, a keyboard of a chosen language and a
// stopped scheduler clock.
#include "Kel_KeyboardLanguage.h"
#include "Kel_KeymapMgr.h"
#include "Ost_Resource.h"
#include "TaskScheduler.h"
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <memory>

namespace keymaptest {

inline QString dataDir() { return testDataDir() + QStringLiteral("keymap/"); }

struct TestKeymapMgr : Kel_KeymapMgr {};

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
    void loadXml(const QString& xml)
    {
        ASSERT_TRUE(mgr->loadFromXMLString(xml, 0)) << xml.toStdString();
    }
    QStringList keys() { return mgr->KeyMap().keys(); }
    QString action(const QString& key, const QString& context, int lang = -1)
    {
        return mgr->lookup(QKeySequence(key), context, lang);
    }

    std::unique_ptr<TestKeymapMgr> mgr;
};

} // namespace keymaptest

#endif
