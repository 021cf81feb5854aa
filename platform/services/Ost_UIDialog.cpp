#include "Ost_UIDialog.h"

#include "Mv_Logging_p.h"
#include "Ost_DirPaths.h"

#include <QAbstractButton>
#include <QApplication>
#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QtDebug>

namespace {

// More buttons than this cannot be a sensible question; a wild count must not
// build thousands of widgets.
const int kMaxButtons = 16;

Ost_UIDialog::Interceptor& installedInterceptor()
{
    static Ost_UIDialog::Interceptor interceptor;
    return interceptor;
}

QMessageBox::Icon boxIcon(Ost_UIDialog::UIicon_t icon)
{
    switch (icon) {
    case Ost_UIDialog::kInformationIcon:
        return QMessageBox::Information;
    case Ost_UIDialog::kErrorIcon:
        return QMessageBox::Critical;
    case Ost_UIDialog::kWarningIcon:
        return QMessageBox::Warning;
    case Ost_UIDialog::kQuestionIcon:
        return QMessageBox::Question;
    case Ost_UIDialog::kNoIcon:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

int Ost_UIDialog::UIdialog(QString message, QString buttonTexts, short buttonCount, UIicon_t icon,
                           QString detailText, bool richText, QString sourceFile)
{
    qCDebug(lcKelPlatform).noquote() << QStringLiteral("Ost_UIDialog from %1: %2").arg(sourceFile, message);

    // Copied so that an interceptor may replace itself while it runs.
    const Interceptor interceptor = installedInterceptor();
    if (interceptor) {
        Request request;
        request.message = message;
        request.buttonTexts = buttonTexts;
        request.buttonCount = buttonCount;
        request.icon = icon;
        request.detailText = detailText;
        request.richText = richText;
        request.sourceFile = sourceFile;
        return interceptor(request);
    }

    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        qCWarning(lcKelPlatform, "Ost_UIDialog::UIdialog: no QApplication, the message cannot be shown");
        return -1;
    }

    QPointer<QMessageBox> box = new QMessageBox(QApplication::activeWindow());
    box->setWindowTitle(Ost_DirPaths::GetProductName());
    box->setIcon(boxIcon(icon));
    box->setTextFormat(richText ? Qt::RichText : Qt::PlainText);
    box->setText(message);
    if (!detailText.isEmpty())
        box->setDetailedText(detailText);

    const QStringList parts = buttonTexts.split(QLatin1Char('|'), Qt::KeepEmptyParts);
    const int count = qBound(1, int(buttonCount), kMaxButtons);
    QList<QAbstractButton*> buttons;
    for (int i = 0; i < count; ++i) {
        const QString text = i < parts.size() && !parts[i].isEmpty() ? parts[i] : QStringLiteral("OK");
        buttons.append(box->addButton(text, QMessageBox::AcceptRole));
    }
    box->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));

    box->exec();
    // The parent window may have taken the box with it while it was open.
    if (!box)
        return -1;
    const int answer = buttons.indexOf(box->clickedButton());
    delete box;
    return answer;
}

Ost_UIDialog::Interceptor Ost_UIDialog::setInterceptor(Interceptor interceptor)
{
    Interceptor previous = installedInterceptor();
    installedInterceptor() = interceptor;
    return previous;
}
