/// A document for any record, as a file or as a text.

#include "fuzz/subject.h"

using namespace Velmara::fuzz;

void Velmara::fuzz::run(Input input)
{
    const Subject subject = chooseSubject(input);
    if (input.bits()[0])
        isDone([&] { subject.record->SetXmlString(QString::fromUtf8(input.rest()), false); });
    else
        isDone([&] { subject.record->LoadXml(scratchFile(input.rest())); });
    exercise(subject);
}
