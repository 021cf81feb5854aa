#include "Kel_ListSelectionDialog.h"

#include "Kel_WhatsThis.h"
#include "Mvt_SimpleValue_BaseAPI.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// More rows than a person chooses from; a model that claims more is cut
// here rather than hanging the dialog.
const long kMaxRows = 100000;

} // namespace

Kel_ListSelectionDialog::Kel_ListSelectionDialog(QWidget* parent, const char* name)
    : QDialog(parent)
    , mPromptP(new QLabel(this))
    , mFilterP(new QLineEdit(this))
    , mListP(new QListWidget(this))
    , mErrorP(new QLabel(this))
{
    setObjectName(QString::fromLatin1(name));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ListSelectionDialog");
    mPromptP->hide();
    mFilterP->setObjectName(QStringLiteral("filter"));
    mFilterP->setPlaceholderText(tr("Filter"));
    mListP->setObjectName(QStringLiteral("choices"));
    mErrorP->setObjectName(QStringLiteral("error"));
    mErrorP->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    mOkButtonP = buttons->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* w : std::initializer_list<QWidget*>{mPromptP, mFilterP, mListP, mErrorP, buttons})
        layout->addWidget(w);
    connect(buttons, &QDialogButtonBox::accepted, this, &Kel_ListSelectionDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(mFilterP, &QLineEdit::textChanged, this, &Kel_ListSelectionDialog::applyFilter);
    connect(mListP, &QListWidget::itemDoubleClicked, this, [this] {
        if (mListP->selectionMode() == QAbstractItemView::SingleSelection)
            accept();
    });
    // The rows and the current choice are read again on every change.
    for (Kel_BoundPropertyBase* p : std::initializer_list<Kel_BoundPropertyBase*>{&mItems, &mSingle, &mMulti})
        p->onNotify([this] { fill(); });
}

Kel_ListSelectionDialog::~Kel_ListSelectionDialog() = default;

void Kel_ListSelectionDialog::setPrompt(const QString& prompt)
{
    mPromptP->setText(prompt);
    mPromptP->setVisible(!prompt.isEmpty());
}

void Kel_ListSelectionDialog::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (Kel_BoundPropertyBase::connectAll(environment, {&mItems, &mSingle, &mMulti}))
        fill();
}

void Kel_ListSelectionDialog::fill()
{
    const bool multi = mMulti.isNamed();
    mListP->setSelectionMode(multi ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
    SortedValueList<long> chosen;
    if (multi) {
        mMulti->get(chosen);
    } else {
        long row = -1;
        if (mSingle->get(row) && row >= 0)
            chosen.add(row);
    }
    mListP->clear();
    const long rows = std::min(mItems->size(), kMaxRows);
    for (long row = 0; row < rows; ++row) {
        auto* item = new QListWidgetItem(mItems->element<QString>(row), mListP);
        item->setData(Qt::UserRole, qlonglong(row));
        item->setSelected(chosen.contains(row));
        if (chosen.first() == row)
            mListP->setCurrentItem(item, QItemSelectionModel::NoUpdate);
    }
    applyFilter(mFilterP->text());
    // Nothing to write the choice to: OK would do nothing.
    const bool writable = multi ? mMulti.isConnected() : mSingle.isConnected();
    mOkButtonP->setEnabled(writable && mItems.isConnected());
}

void Kel_ListSelectionDialog::applyFilter(const QString& text)
{
    for (int i = 0; i < mListP->count(); ++i) {
        QListWidgetItem* item = mListP->item(i);
        item->setHidden(!text.isEmpty() && !item->text().contains(text, Qt::CaseInsensitive));
    }
}

void Kel_ListSelectionDialog::accept()
{
    SortedValueList<long> chosen;
    for (const QListWidgetItem* item : mListP->selectedItems())
        chosen.add(long(item->data(Qt::UserRole).toLongLong()));
    int status = Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
    if (mMulti.isNamed())
        status = mMulti.set(chosen);
    else
        status = mSingle.set(chosen.first());
    if (status == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    if (status == Mvt_SimpleValue_BaseAPI::kSetRefused || status == Mvt_SimpleValue_BaseAPI::kSetNotAnswered) {
        mErrorP->setText(tr("This choice was not accepted."));
        mErrorP->show();
        return;
    }
    mErrorP->hide();
    QDialog::accept();
}
