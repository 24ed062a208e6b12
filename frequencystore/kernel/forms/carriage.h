#pragma once

/// What the forms of texts cannot carry. Under validation writers refuse it, so that nothing is lost in silence.

#include "frequencystore/kernel/forms/text.h"
#include "frequencystore/kernel/model/walk.h"

namespace Velmara::kernel {

using TALLYFORM::WrittenForm;

/// Why a form does not give a value back; null if it does.
template <class T> QString reasonAgainst(const Member&, const T&, WrittenForm) { return {}; }
QString reasonAgainst(const Member& m, const QString& text, WrittenForm form);
QString reasonAgainst(const Member& m, const QDateTime& time, WrittenForm form);
QString reasonAgainstNameless(const Member& m, int value);
template <IsEnum E> QString reasonAgainst(const Member& m, const E& value, WrittenForm)
{
    return reasonAgainstNameless(m, int(value));
}

/// Why readers do not find an element by a name that was given to its object; null if they do.
QString reasonAgainstName(const QString& name);
inline QString reasonAgainstName(const ITallyObject& object)
{
    return object.HasOwnName() ? reasonAgainstName(object.GetObjectName()) : QString();
}

/// Throws OutOfRangeException under validation for a value that a form cannot carry.
template <class T> void refuseUncarried(const ITallyObject& self, const Member& m, const T& value, WrittenForm form)
{
    if constexpr (std::is_same_v<T, QString> || std::is_same_v<T, QDateTime>)
        if (self.ITallyObject::GetValidate() && !reasonAgainst(m, value, form).isNull())
            refuseContent(self, m, Fault::Kind::Uncarried);
}
[[noreturn]] void refuseName(const QString& reason);

/// Looks for the first content that a form cannot carry. Where it is, is told on the way back alone, for mostly there
/// is none.
class UncarriedSearch
{
public:
    UncarriedSearch(const RecordData& data, WrittenForm form, Fault& found) : m_data(data), m_form(form), m_found(found)
    {}

    template <class T> bool operator()(const Member& m, const T& value) const
    {
        return isWritten<T>(m_data, m) && search(m, value, -1);
    }
    template <class T> bool operator()(const Member& m, const QVector<T>& list) const
    {
        for (int i = 0; i < list.size(); ++i)
            if (search(m, list.at(i), i))
                return true;
        return false;
    }

private:
    template <class T> bool search(const Member& m, const T& value, int index) const
    {
        if constexpr (IsRecord<T>) {
            if (!Record<T>::findUncarried(value, m_form, m_found))
                return false;
        } else {
            m_found.message = reasonAgainst(m, value, m_form);
            if (m_found.message.isNull())
                return false;
        }
        if (m.form != Member::Form::Content)
            m_found.addAbove(m.accessor, index);
        return true;
    }

    const RecordData& m_data;
    WrittenForm m_form;
    Fault& m_found;
};

template <class R> bool Record<R>::findUncarried(const R& r, WrittenForm form, Fault& found)
{
    if (form == WrittenForm::Xml) {
        found.message = reasonAgainstName(r);
        if (!found.message.isNull())
            return true;
    }
    return r.m_data && any(*peekData(r), UncarriedSearch(*peekData(r), form, found));
}

} // namespace Velmara::kernel
