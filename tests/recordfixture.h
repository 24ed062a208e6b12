#pragma once

/// What tests of records share.

#include "frequencystore/frequencystore.h"
#include "randomfiller.h"
#include "recorder.h"
#include "recordforms.h"

#include <gtest/gtest.h>

inline void PrintTo(const QString& text, std::ostream* out) { *out << text.toStdString(); }
inline void PrintTo(const QByteArray& bytes, std::ostream* out) { *out << bytes.toHex().toStdString(); }

/// The message of the exception that an action throws, which must be an E itself; "none" without one.
template <class E, class Action> QString messageOf(Action action)
{
    try {
        action();
    } catch (const TALLYFORM::TallyFormException& e) {
        return typeid(e) == typeid(E) ? e.GetMessage() : "other class: " + e.GetMessage();
    }
    return "none";
}

/// What the exception of an action carries; of kind Other without one.
template <class Action> TALLYFORM::Fault faultOf(Action action)
{
    try {
        action();
    } catch (const TALLYFORM::TallyFormException& failure) {
        EXPECT_EQ(failure.GetFault().message, failure.GetMessage());
        return failure.GetFault();
    }
    return {};
}

/// All that a fault tells.
inline QString told(const TALLYFORM::Fault& fault)
{
    return QStringList{QString::number(int(fault.kind)), fault.path, fault.member, fault.place.text(), fault.message}
        .join(" | ");
}

/// Calls a visitor with each class: [&]<class R>() { ... }
template <class... R> void forAll(Velmara::RecordTypes<R...>, auto visitor) { (visitor.template operator()<R>(), ...); }
