#pragma once

#include "frequencystore/kernel/model/walk.h"
#include "recordforms.h"

#include <string>

/// Calls a visitor with the record, or all records, that a field holds.
template <class T, class Visit> void forRecordsIn(T& field, Visit visit)
{
    if constexpr (Velmara::kernel::IsRecord<T>)
        visit(field);
    else if constexpr (requires { requires Velmara::kernel::IsRecord<typename T::value_type>; })
        std::for_each(field.begin(), field.end(), visit);
}

template <class R> void writeState(const R& record, QDataStream& out)
{
    using namespace Velmara::kernel;
    const auto* const data = Record<R>::peekData(record);
    out << record.GetObjectName() << record.GetValidate() << quintptr(record.GetLogger().get()) << !data;
    if (!data)
        return;
    out << data->bits << data->choice;
    if constexpr (IsVersioned<R>)
        out << data->versionLoaded;
    visit(*data, [&]<class T>(const Member&, const T& field) {
        if constexpr (IsEnum<T>)
            out << qint8(field);
        else if constexpr (IsValue<T> || requires { requires IsValue<typename T::value_type>; })
            out << field;
        else
            forRecordsIn(field, [&](const auto& below) { writeState(below, out); });
    });
}

/// All that there is of a record and all below it, set or not, flags and loggers included, told without a touch on it.
template <class R> std::string stateOf(const R& record)
{
    return bytesOf([&](QDataStream& out) { writeState(record, out); }).toStdString();
}
