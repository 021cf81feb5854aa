// Fuzzes action scripts end to end: parse, connect, ask whether the script
// can run, evaluate, reconnect elsewhere, and outlive the models. Each
// input gets fresh models in a private dictionary, so that one input never
// sees what another left behind:
//
//   B (bool), L (long), S (QString)   value models
//   RO                                a read-only long
//   Play: void()                      counts calls; Off: void(), disabled
//   Seek: void(long)                  takes one argument
//   Drop: void()                      unpublishes B while the script runs
//   Close: void()                     destroys S while the script runs
//   Again: bool()                     runs the script "L = RO" from inside
//   List::row (index 0), Arr          an index model and a QString array;
//                                     $Row names the index model
//
// No application object is needed: nothing here touches the event loop or
// widgets (there is no owner window).
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mv_Variant.h"
#include "Mve_Action.h"
#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_SimpleValue.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"
#include "Uip_RunScript.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

namespace {

struct Models
{
    explicit Models(Mv_ConnectionDict* dict)
    {
        ro->setReadOnly(true);
        off->setEnabled(false);
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{
                 b.get(), l.get(), s.get(), ro.get(), play.get(), off.get(), seek.get(), drop.get(), close.get(),
                 again.get(), row.get(), arr.get()})
            m->Publish(dict);
    }

    Mv_ConnectionEnvironment::ConstPtr env;
    std::unique_ptr<Mve_SimpleValue<bool>> b{new Mve_SimpleValue<bool>(false, QStringLiteral("B"))};
    std::unique_ptr<Mve_SimpleValue<long>> l{new Mve_SimpleValue<long>(1, QStringLiteral("L"))};
    std::unique_ptr<Mve_SimpleValue<QString>> s{new Mve_SimpleValue<QString>(QStringLiteral("s"), QStringLiteral("S"))};
    std::unique_ptr<Mve_SimpleValue<long>> ro{new Mve_SimpleValue<long>(7, QStringLiteral("RO"))};
    int plays = 0;
    std::unique_ptr<Mve_Action<void()>> play{new Mve_Action<void()>([this] { ++plays; }, QStringLiteral("Play"))};
    std::unique_ptr<Mve_Action<void()>> off{new Mve_Action<void()>([this] { ++plays; }, QStringLiteral("Off"))};
    std::unique_ptr<Mve_Action<void(long)>> seek{
        new Mve_Action<void(long)>([this](long v) { l->setValue(v); }, QStringLiteral("Seek"))};
    std::unique_ptr<Mve_Action<void()>> drop{new Mve_Action<void()>([this] { b->UnPublish(); }, QStringLiteral("Drop"))};
    std::unique_ptr<Mve_Action<void()>> close{new Mve_Action<void()>([this] { s.reset(); }, QStringLiteral("Close"))};
    std::unique_ptr<Mve_Action<bool()>> again{
        new Mve_Action<bool()>([this] { return Uip_RunScript(env, QStringLiteral("L = RO")); }, QStringLiteral("Again"))};
    std::unique_ptr<Mve_Index<long>> row{new Mve_Index<long>(0, QStringLiteral("List::row"))};
    std::unique_ptr<Mve_Array<QString>> arr{
        new Mve_Array<QString>(std::vector<QString>{QStringLiteral("a"), QStringLiteral("b")}, QStringLiteral("Arr"))};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString script = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    std::unique_ptr<Uip_ParseNode> root(Uip_ParseScript(script, nullptr));
    if (!root)
        return 0;

    Mv_ConnectionDict dict;
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
    env->set(QStringLiteral("Row"), QStringLiteral("List::row"));
    std::unique_ptr<Models> models(new Models(&dict));
    models->env = env;

    // Owners drop a tree that does not connect; running it anyway checks
    // that partly connected trees fail cleanly.
    root->ConnectAndTypeCheck(env, nullptr);
    root->isConnected();
    Mv_Variant result;
    root->Evaluate(&result);
    root->isConnected();

    // Again in another environment, where $Row names an index that is out
    // of the array's range.
    auto other = Mv_ConnectionEnvironment::create(env);
    other->set(QStringLiteral("Row"), QStringLiteral("RO"));
    root->ConnectAndTypeCheck(other, nullptr);
    root->Evaluate(&result);

    // The models go first; the tree must notice.
    models.reset();
    root->isConnected();
    root->Evaluate(&result);
    return 0;
}
