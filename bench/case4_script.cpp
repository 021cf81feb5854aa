// Case 4 of kelcore_bench; see BenchSupport.h for how cases are timed.
#include "BenchSupport.h"

#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <memory>

using namespace bench;

namespace {

// --- 4. Script evaluation ----------------------------------------------------

bool benchScript()
{
    const int kCalls = 200000;
    long plays = 0;
    const boost::function<void()> playFunction = [&plays] { ++plays; };
    Mve_SimpleValue<long> a(0, QStringLiteral("Bench.Script.A"));
    Mve_SimpleValue<long> b(0, QStringLiteral("Bench.Script.B"));
    Mve_Action<void()> play(playFunction, QStringLiteral("Bench.Script.Play"));
    a.Publish();
    b.Publish();
    play.Publish();

    Uip_ParseError error;
    std::unique_ptr<Uip_ParseNode> script(Uip_ParseScript(QStringLiteral("Bench.Script.A = Bench.Script.B; Bench.Script.Play()"), &error));
    if (!script || !script->ConnectAndTypeCheck(Mv_ConnectionEnvironment::blankEnvironment(), nullptr)) {
        broken("case 4: the script does not connect");
        return false;
    }

    // B changes on every call, so that every assignment really stores.
    bool ok = true;
    const Result r = compare(
        [&] {
            const double start = nowNs();
            for (int i = 0; i < kCalls; ++i) {
                b.setValue(i);
                ok = script->Evaluate(nullptr) && ok;
            }
            return (nowNs() - start) / kCalls;
        },
        [&] {
            const double start = nowNs();
            for (int i = 0; i < kCalls; ++i) {
                b.setValue(i);
                a.setValue(b.getValue());
                playFunction();
            }
            return (nowNs() - start) / kCalls;
        });
    ok = ok && a.getValue() == kCalls - 1 && plays == 2 * long(kCalls) * (gRepetitions + 1);
    if (!ok)
        broken("case 4: the script did not run every time");
    // Also still well under a microsecond per statement, the first target.
    return printRatio("4 script \"A = B; Play()\", per call", r, 2.0);
}

} // namespace

namespace {
const BenchCaseRegistrar registration(4, [](const QString&) { return benchScript(); });
} // namespace
