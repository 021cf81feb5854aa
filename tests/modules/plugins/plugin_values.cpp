// A plug-in that publishes value models of its own instantiation: one of an
// application-defined type and one of bool.
#include "PluginClip.h"

#include "Mve_SimpleValue.h"

#include <QtGlobal>
#include <memory>

namespace {
std::unique_ptr<Mve_SimpleValue<PluginClip>> gClip;
std::unique_ptr<Mve_SimpleValue<bool>> gEnabled;
} // namespace

extern "C" Q_DECL_EXPORT void kelPluginPublish(Mv_ConnectionDict* dict)
{
    gClip = std::make_unique<Mve_SimpleValue<PluginClip>>(PluginClip{QStringLiteral("Intro"), 25}, "Plugin.Clip");
    gEnabled = std::make_unique<Mve_SimpleValue<bool>>(false, "Plugin.Enabled");
    gClip->Publish(dict);
    gEnabled->Publish(dict);
}

extern "C" Q_DECL_EXPORT void kelPluginSetClip(const PluginClip* clip)
{
    gClip->setValue(*clip);
}

extern "C" Q_DECL_EXPORT void kelPluginGetClip(PluginClip* clip)
{
    *clip = gClip->getValue();
}

extern "C" Q_DECL_EXPORT bool kelPluginEnabled()
{
    return gEnabled->getValue();
}

extern "C" Q_DECL_EXPORT void kelPluginRelease()
{
    gClip.reset();
    gEnabled.reset();
}
