#ifndef MVE_RECORDARRAY_H
#define MVE_RECORDARRAY_H

#include "kelplatform_export.h"

#include "Mve_Array.h"
#include "Mvt_ArrayContainer.h"

#include <memory>
#include <utility>
#include <vector>

// An array of records with named fields, the usual shape of a list model.
// The record array is the container, published under its name (size,
// replaced and moved notifications); each field is an Mve_Array published
// under name + "." + field, so that "Clips" gives the rows and "Clips.name"
// (or "Clips.name[$Row]" for one row) the names. Rows are inserted, removed
// and moved here, on all fields at once; field values are changed through
// setValue() or the field arrays' setAt(). Every listener is notified only
// once all fields agree. Any listener may destroy the record array, or its
// dictionary, while it notifies.
class KELPLATFORM_EXPORT Mve_RecordArray : public Mvt_ArrayContainer
{
public:
    explicit Mve_RecordArray(const QString& name = QString());
    ~Mve_RecordArray() override;

    // Adds a field; existing rows get def. Null when the name is taken.
    template <class T>
    Mve_Array<T>* addField(const QString& field, const T& def = T())
    {
        if (fieldIndex(field) >= 0)
            return nullptr;
        auto* f = new Field<T>(this, def);
        f->array.SetConnectionName(fieldName(field));
        f->array.setReadOnly(mReadOnly);
        f->array.insert(0, std::vector<T>(size_t(mRows), def));
        mFields.emplace_back(field, std::unique_ptr<FieldBase>(f));
        if (mUpdateDepth > 0)
            f->silence();
        if (isPublished())
            f->array.Publish(dictionary());
        return &f->array;
    }

    // The field's array, or null when there is none of that type.
    template <class T>
    Mve_Array<T>* field(const QString& field) const
    {
        const int i = fieldIndex(field);
        auto* f = i < 0 ? nullptr : dynamic_cast<Field<T>*>(mFields[size_t(i)].second.get());
        return f ? &f->array : nullptr;
    }

    QStringList fieldNames() const;
    long rowCount() const { return mRows; }

    // New rows (each field's default) before row, clamped to [0, rows].
    void insertRows(long row, long count = 1);
    long appendRow();
    void removeRows(long row, long count = 1);
    // Moves row from to position to; false when either is out of range or
    // they are equal.
    bool moveRow(long from, long to);
    void clearRows();

    // While read-only, listeners can neither write field values nor move
    // rows (through the record or through any of its fields); the owner's
    // operations above still work.
    void setReadOnly(bool readOnly);
    bool isReadOnly() const { return mReadOnly; }

    // A burst of changes told once: between beginUpdate() and the matching
    // endUpdate() (pairs nest) rows and values change silently, the field
    // arrays included, and endUpdate() of the outermost pair tells every
    // listener of the record and of its fields that all elements were
    // replaced. Listeners may destroy the record array from there.
    void beginUpdate();
    void endUpdate();
    bool isUpdating() const { return mUpdateDepth > 0; }

    // Changes one field of a row. However a field changes (here, through
    // the field array's setAt(), or by a listener's set), the record's own
    // listeners hear MsgElementValueChanged(row) after the field's: the row
    // changed, so a list of the whole record repaints it.
    template <class T>
    bool setValue(long row, const QString& fieldName, const T& value)
    {
        Mve_Array<T>* f = field<T>(fieldName);
        return f && f->setAt(row, value);
    }
    template <class T>
    T value(long row, const QString& fieldName, const T& def = T()) const
    {
        Mve_Array<T>* f = field<T>(fieldName);
        return f && row >= 0 && row < f->size() ? f->at(row) : def;
    }

    // The fields follow the record array in and out of the dictionary, and
    // listeners hear of the record and its fields only once all are there
    // (or all are gone).
    bool publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement) override;
    void unpublishQuietly(Mv_Announcement& announcement) override;

protected:
    long handleGetSize() override { return mRows; }
    // A listener's move request, through the record or one of its fields,
    // moves the whole row.
    bool handleMoveElements(long from, long to) override { return !mReadOnly && moveRow(from, to); }

private:
    struct FieldBase
    {
        virtual ~FieldBase() = default;
        virtual Mvt_ArrayContainer& model() = 0;
        // Silence the field for a burst; whatever its owner had set
        // returns at the end.
        virtual void silence() = 0;
        virtual void restore() = 0;
        virtual void insertDefaults(long row, long count) = 0;
        virtual void remove(long row, long count) = 0;
        virtual void move(long from, long to) = 0;
        virtual void setReadOnly(bool readOnly) = 0;
    };
    // A field's array; a listener asking it to move an element moves the
    // row, so that the fields never disagree.
    template <class T>
    class FieldArray : public Mve_Array<T>
    {
    public:
        explicit FieldArray(Mve_RecordArray* record) : mRecordP(record) {}

        void notifyElementValueChanged(long index) override
        {
            Mv_ModelBase::Guard guard(this); // a listener may destroy the record, and this field with it
            Mve_Array<T>::notifyElementValueChanged(index);
            if (guard.alive())
                mRecordP->notifyElementValueChanged(index);
        }

    protected:
        bool handleMoveElements(long from, long to) override { return mRecordP->handleMoveElements(from, to); }

    private:
        Mve_RecordArray* mRecordP;
    };
    template <class T>
    struct Field : FieldBase
    {
        Field(Mve_RecordArray* record, const T& d) : array(record), def(d) {}
        Mvt_ArrayContainer& model() override { return array; }
        void silence() override
        {
            if (silenced++ == 0) {
                wasNotifying = array.isNotifying();
                array.setNotifying(false);
            }
        }
        void restore() override
        {
            if (--silenced == 0)
                array.setNotifying(wasNotifying);
        }
        void insertDefaults(long row, long count) override { array.insert(row, std::vector<T>(size_t(count), def)); }
        void remove(long row, long count) override { array.removeAt(row, count); }
        void move(long from, long to) override { array.move(from, to); }
        void setReadOnly(bool readOnly) override { array.setReadOnly(readOnly); }
        FieldArray<T> array;
        T def;
        int silenced = 0;
        bool wasNotifying = true;
    };

    int fieldIndex(const QString& field) const;
    QString fieldName(const QString& field) const;
    void silenceFields();
    void restoreFields();
    void notifyRowsReplaced(long first, long removedEnd, long insertedCount);
    template <class Notify>
    void notifyAll(Notify&& notify);

    std::vector<std::pair<QString, std::unique_ptr<FieldBase>>> mFields;
    long mRows = 0;
    int mUpdateDepth = 0;
    long mRowsBeforeUpdate = 0;
    bool mReadOnly = false;
};

#endif
