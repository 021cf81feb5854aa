#ifndef KEL_BOUNDTEXT_H
#define KEL_BOUNDTEXT_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

// The text of an editable field bound to a string model in one of two forms.
// Listening: the specification names a model elsewhere; the field shows its
// value and writes the user's changes to it, without taking its own write
// back as a new value. Publishing: the specification is "publish" followed
// by a name; the field publishes a string model of its own under that name
// at once, through which others read and set its text.
class KELCORE_EXPORT Kel_BoundText
{
public:
    typedef std::function<QString()> TextReader;
    typedef std::function<void(const QString&)> TextWriter;
    typedef std::function<QString(const QString&)> NameResolver;

    // readText gives the field's text, showText sets it. Both are called
    // while owner lives; owner is the QObject a notification may delete.
    Kel_BoundText(QObject* owner, TextReader readText, TextWriter showText);
    ~Kel_BoundText();
    Kel_BoundText(const Kel_BoundText&) = delete;
    Kel_BoundText& operator=(const Kel_BoundText&) = delete;

    // Takes a new specification: leaves the current form first, then either
    // names the model to listen to (connected by connect()) or publishes a
    // model under resolvePublishedName(name). Nothing happens, and false is
    // answered, when spec equals the current one.
    bool setSpec(const QByteArray& spec, const NameResolver& resolvePublishedName);
    const QByteArray& spec() const { return mSpec; }
    // Unpublishes a published model and leaves a listened one.
    void clear();

    // Connects the listening form in environment (the publishing form needs none).
    void connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment);

    // Each value shown from a listened model is also handed here.
    void onListenedValue(const TextWriter& handler) { mListenedValueHandler = handler; }

    // To be called on every change of the field's text, typed or set: tells
    // the published model's listeners, and writes the text to the listened
    // model; when that model refuses it, the field shows the model's value again.
    void textChanged();

    bool isListening() const { return mListener.isNamed(); }
    bool isConnected() const { return mListener.isConnected(); }
    Mvt_SimpleValue<QString>* publishedModel() const { return mPublishedModelP.get(); }

private:
    void receiveListenerMessage();
    bool handlePublishedModelMessage(const Mv_MessageInterface& message);

    QObject* mOwnerP;
    TextReader mReadText;
    TextWriter mShowText;
    TextWriter mListenedValueHandler;
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mListener;
    // Set while the field writes to the listened model, so that the
    // model's notification of that write is not shown again.
    bool mSettingModel;
    QByteArray mSpec;
    std::unique_ptr<Mvt_SimpleValue<QString>> mPublishedModelP;
};

#endif
