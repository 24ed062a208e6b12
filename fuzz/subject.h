#pragma once

/// A record whose class an input chooses, and its forms.

#include "frequencystore/reflection.h"
#include "fuzz/target.h"

#include <QDataStream>

#include <functional>
#include <memory>

namespace Velmara::fuzz {

/// A record of some class.
struct Subject
{
    const RecordDescription& of;
    std::unique_ptr<TALLYFORM::ITallyObject> record = of.make();

    /// An empty one of the same class, with the same flag.
    Subject another() const;
    /// What of the content no form rounds: texts, date-times and enumerations, read past all forms of texts.
    QByteArray exactContent() const;
};

/// The first four bytes choose the class, by its tag or else by counting, the next one the flag.
Subject chooseSubject(Input& input);
QByteArray choiceOf(const Subject& subject);

enum class Form { Xml, Tagged, Packed, Compressed };
constexpr Form allForms[] = {Form::Xml, Form::Tagged, Form::Packed, Form::Compressed};

/// Empty if the record declines, or holds what the form cannot carry; throws if the record is refused.
QByteArray write(const Subject& subject, Form form);
/// Whether the bytes are of the form; throws if they are refused.
bool read(Subject& subject, Form form, const QByteArray& bytes);

/// Reads from a stream whose settings and device an input's next byte chooses.
void readFromStream(Input& input, const std::function<void(QDataStream& stream, int size)>& read);

/// Does with a record, whatever it holds by now, what may be done with every record.
void exercise(const Subject& subject);

} // namespace Velmara::fuzz
