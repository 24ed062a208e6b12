/// The forms of any record against each other. What loads from one and writes itself loads again as the same; and what
/// XML has carried, which is the most exacting, the others carry too. What is lost on the way has been told.

#include "fuzz/subject.h"

#include <optional>

using namespace Velmara::fuzz;

namespace {

Subject reread(const Subject& subject, Form form, const QByteArray& bytes)
{
    Subject copy = subject.another();
    require(isDone([&] { require(read(copy, form, bytes), "what was written is of its form"); }),
            "what was written is not refused");
    return copy;
}

QByteArray rewrite(const Subject& subject, Form form)
{
    QByteArray bytes;
    require(isDone([&] { bytes = write(subject, form); }), "what was written and read can be written");
    return bytes;
}

/// Whether the record knows of nothing that the form cannot carry.
bool isCarried(const Subject& subject, Form form)
{
    using TALLYFORM::WrittenForm;
    const auto written = form == Form::Xml ? WrittenForm::Xml : WrittenForm::Tagged;
    return form == Form::Packed || subject.record->FindUncarried(written).isNull();
}

/// What becomes of a record on its way through a form; null if it is not written. Texts round what they carry, and a
/// rounded value may have another text, as -0.001, which becomes -0 as "-0.00" and then 0; so a record settles on its
/// second way.
std::optional<Subject> settled(const Subject& subject, Form form)
{
    QByteArray first;
    if (!isDone([&] { first = write(subject, form); }) || first.isEmpty())
        return std::nullopt;
    const Subject reread = ::reread(subject, form, first);
    require(!isCarried(subject, form) || reread.exactContent() == subject.exactContent(), "nothing is lost in silence");
    const QByteArray second = rewrite(reread, form);
    Subject settled = ::reread(subject, form, second);
    require(rewrite(settled, form) == second, "what was written and read is written the same");
    require(form != Form::Packed || first == second, "the packed form carries every bit");
    return std::optional(std::move(settled));
}

void requireSame(const Subject& a, const Subject& b)
{
    require(write(a, Form::Xml) == write(b, Form::Xml), "all forms carry the same");
    require(a.of.areEqual(*a.record, *b.record) == a.of.areEqual(*a.record, *a.record), // a NaN equals not even itself
            "all forms carry what compares equal");
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    Subject subject = chooseSubject(input);
    const Form source = allForms[input.byte() % std::size(allForms)];
    if (!read(subject, source, input.rest()))
        return;
    for (const Form form : {Form::Tagged, Form::Packed, Form::Compressed})
        settled(subject, form);
    const auto carried = settled(subject, Form::Xml);
    for (const Form form : {Form::Tagged, Form::Packed, Form::Compressed})
        if (carried)
            requireSame(*carried, reread(*carried, form, rewrite(*carried, form)));
}
