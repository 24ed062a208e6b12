/// A packed stream for any record.

#include "fuzz/subject.h"

using namespace Velmara::fuzz;

void Velmara::fuzz::run(Input input)
{
    const Subject subject = chooseSubject(input);
    isDone([&] {
        readFromStream(input, [&](QDataStream& stream, int) { subject.of.setPacked(*subject.record, stream); });
    });
    exercise(subject);
}
