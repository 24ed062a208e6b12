#pragma once

/// A record whose class an input chooses, and its forms.

#include "base/tallyobject.h"
#include "fuzz/target.h"

#include <QDataStream>

#include <functional>
#include <memory>
#include <vector>

namespace Velmara::fuzz {

/// What the base class of records cannot do.
class Subject
{
public:
    virtual ~Subject() = default;
    /// An empty one of the same class, with the same flag.
    virtual std::unique_ptr<Subject> another() const = 0;
    virtual TALLYFORM::ITallyObject& record() = 0;
    virtual const TALLYFORM::ITallyObject& record() const = 0;
    virtual quint32 tag() const = 0;
    virtual QByteArray packed() const = 0;
    virtual void readPacked(QDataStream& stream) = 0;
    virtual bool equals(const Subject& other) const = 0;
    /// What of the content no form rounds: texts, date-times and enumerations, read past all forms of texts.
    virtual QByteArray exactContent() const = 0;
};

/// An empty record of each class.
const std::vector<std::unique_ptr<Subject>>& subjects();

/// The first four bytes choose the class, by its tag or else by counting, the next one the flag.
std::unique_ptr<Subject> chooseSubject(Input& input);
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
