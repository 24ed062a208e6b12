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

/// Looks for the first content that a form cannot carry.
class UncarriedSearch
{
public:
    UncarriedSearch(const RecordData& data, WrittenForm form, const QString& path)
        : m_data(data), m_form(form), m_path(path)
    {}

    template <class T> bool operator()(const Member& m, const T& value)
    {
        return isWritten<T>(m_data, m) && search(m, value, below(m));
    }
    template <class T> bool operator()(const Member& m, const QVector<T>& list)
    {
        int place = 0;
        return std::any_of(list.begin(), list.end(), [&](const T& item) {
            return search(m, item, QStringLiteral("%1[%2]").arg(below(m)).arg(++place));
        });
    }
    const QString& found() const { return m_found; }

private:
    QString below(const Member& m) const
    {
        if (m.form == Member::Form::Content)
            return m_path;
        return m_path.isEmpty() ? QString(m.accessor) : m_path + QLatin1Char('/') + m.accessor;
    }
    template <class T> bool search(const Member& m, const T& value, const QString& path)
    {
        if constexpr (IsRecord<T>)
            m_found = Record<T>::findUncarried(value, m_form, path);
        else if (const QString reason = reasonAgainst(m, value, m_form); !reason.isNull())
            m_found = path + QLatin1String(": ") + reason;
        return !m_found.isNull();
    }

    const RecordData& m_data;
    WrittenForm m_form;
    QString m_path;
    QString m_found;
};

template <class R> QString Record<R>::findUncarried(const R& r, WrittenForm form, const QString& path)
{
    if (const QString reason = reasonAgainstName(r); form == WrittenForm::Xml && !reason.isNull())
        return path.isEmpty() ? reason : path + QLatin1String(": ") + reason;
    if (!r.m_data)
        return {};
    const auto& data = *peekData(r);
    UncarriedSearch search(data, form, path);
    any(data, search);
    return search.found();
}

} // namespace Velmara::kernel
