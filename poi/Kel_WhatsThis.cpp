#include "Kel_WhatsThis.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

namespace {

// A widget's registered name. The entry does not follow its widget's
// destruction (a connection to it would cost more than the name itself):
// the guarded pointer tells a dead widget's entry from the entry of a new
// widget at the same address.
struct Entry
{
    QPointer<QWidget> widget;
    QString name;
};

// Widgets live on the GUI thread, and so does this table.
struct Registry
{
    QHash<const QWidget*, Entry> entries;
    // Entries of dead widgets are swept when the table has grown to this.
    int sweepAt = 64;
    // The texts of the names seen, by the address of the characters, shared
    // by every widget that registers them: widgets register literals, a few
    // dozen of them. The text is checked against the characters, which may
    // be a buffer that now holds another name.
    QHash<const char*, QString> texts;
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

const int kMaxSharedTexts = 256;

QString textOf(Registry& r, const char* name)
{
    const QLatin1String characters(name);
    const auto found = r.texts.constFind(name);
    if (found != r.texts.constEnd() && found.value() == characters)
        return found.value();
    const QString text(characters);
    if (found != r.texts.constEnd() || r.texts.size() < kMaxSharedTexts)
        r.texts.insert(name, text);
    return text;
}

void sweep(Registry& r)
{
    for (auto it = r.entries.begin(); it != r.entries.end();) {
        if (it.value().widget.isNull())
            it = r.entries.erase(it);
        else
            ++it;
    }
    r.sweepAt = qMax(64, 2 * int(r.entries.size()));
}

} // namespace

void Kel_WhatsThis::setBestWhatsThisName(QWidget* widget, const char* name)
{
    // Only help lookup sees the name; the what's-this text that users read
    // stays whatever the form or the owner gives the widget.
    if (!widget || !name || !*name)
        return;
    Registry& r = registry();
    Entry& entry = r.entries[widget];
    if (entry.widget.data() != widget) // new, or left by a widget gone
        entry.widget = widget;
    entry.name = textOf(r, name);
    if (r.entries.size() >= r.sweepAt)
        sweep(r);
}

QString Kel_WhatsThis::whatsThisName(const QWidget* widget)
{
    if (!widget)
        return QString();
    const Registry& r = registry();
    const auto found = r.entries.constFind(widget);
    if (found == r.entries.constEnd() || found.value().widget.data() != widget)
        return QString();
    return found.value().name;
}
