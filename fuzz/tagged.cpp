/// The body of a tagged frame for any record.

#include "fuzz/subject.h"

using namespace Velmara::fuzz;

void Velmara::fuzz::run(Input input)
{
    const Subject subject = chooseSubject(input);
    isDone([&] {
        readFromStream(input, [&](QDataStream& stream, int size) { subject.record->SetBinary(stream, size); });
    });
    exercise(subject);
}
