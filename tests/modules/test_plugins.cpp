// Models, messages and widgets across module boundaries: plug-ins loaded at
// run time, each with its own copies of the library's templates.
#include "PluginClip.h"

#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Mve_SimpleValue.h"
#include "Mv_ConnectionDict.h"

#include <QLibrary>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

template <class F>
F resolve(QLibrary& library, const char* name)
{
    auto f = reinterpret_cast<F>(library.resolve(name));
    EXPECT_NE(f, nullptr) << name << ": " << qPrintable(library.errorString());
    return f;
}

TEST(Plugins, ValueModelsOfAPluginAnswerAndNotifyThisProgram)
{
    QLibrary plugin(QStringLiteral(KEL_TEST_PLUGIN_VALUES));
    ASSERT_TRUE(plugin.load()) << qPrintable(plugin.errorString());
    const auto publish = resolve<void (*)(Mv_ConnectionDict*)>(plugin, "kelPluginPublish");
    const auto setClip = resolve<void (*)(const PluginClip*)>(plugin, "kelPluginSetClip");
    const auto getClip = resolve<void (*)(PluginClip*)>(plugin, "kelPluginGetClip");
    const auto enabled = resolve<bool (*)()>(plugin, "kelPluginEnabled");
    const auto release = resolve<void (*)()>(plugin, "kelPluginRelease");
    ASSERT_TRUE(publish && setClip && getClip && enabled && release);

    Mv_ConnectionDict dict;
    publish(&dict);
    auto env = Mv_ConnectionEnvironment::create({}, &dict);
    Mvt_SimpleValue<PluginClip>::Listener clip("Plugin.Clip", env);
    int changes = 0;
    clip.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        changes += m.is<Mvt_SimpleValue_Notifications::MsgValueChanged>() ? 1 : 0;
    });
    EXPECT_EQ(clip.value().name, "Intro");
    EXPECT_EQ(clip.set(PluginClip{QStringLiteral("Outro"), 50}), Mvt_SimpleValue_BaseAPI::kSetChanged);
    PluginClip stored;
    getClip(&stored);
    EXPECT_EQ(stored.frames, 50);
    const PluginClip fromPlugin{QStringLiteral("Credits"), 75};
    setClip(&fromPlugin);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(clip.value().name, "Credits");

    // A library widget in this program, bound to the plug-in's bool.
    QWidget window;
    auto* box = new Kel_CheckBox(&window, "enabledBox");
    box->setCheckedStateConnectionSpec("Plugin.Enabled");
    (new QVBoxLayout(&window))->addWidget(box);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Kel_ConnectionUtils::recursiveConnect(&window, env);
    EXPECT_FALSE(box->isChecked());
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(6, box->height() / 2));
    EXPECT_TRUE(enabled());
    EXPECT_TRUE(box->isChecked());

    delete box;
    release();
    EXPECT_FALSE(clip.isConnectedToModel());
}

TEST(Plugins, APluginsCheckBoxBindsToAModelOfThisProgram)
{
    QLibrary plugin(QStringLiteral(KEL_TEST_PLUGIN_CHECKBOX));
    ASSERT_TRUE(plugin.load()) << qPrintable(plugin.errorString());
    const auto make = resolve<QWidget* (*)(QWidget*, const char*)>(plugin, "kelPluginMakeCheckBox");
    ASSERT_TRUE(make);

    Mv_ConnectionDict dict;
    Mve_SimpleValue<bool> muted(true, "App.Muted");
    muted.Publish(&dict);
    QWidget window;
    auto* box = qobject_cast<QCheckBox*>(make(&window, "App.Muted"));
    ASSERT_TRUE(box);
    (new QVBoxLayout(&window))->addWidget(box);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::create({}, &dict));
    EXPECT_TRUE(box->isChecked());
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(6, box->height() / 2));
    EXPECT_FALSE(muted.getValue());
    muted.setValue(true);
    EXPECT_TRUE(box->isChecked());
    delete box; // the plug-in stays loaded: its code runs in the destructor
}

} // namespace
