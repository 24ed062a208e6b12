/// A packed stream for any record.

#include "fuzz/subject.h"

using namespace Velmara::fuzz;

void Velmara::fuzz::run(Input input)
{
    const auto subject = chooseSubject(input);
    isDone([&] { readFromStream(input, [&](QDataStream& stream, int) { subject->readPacked(stream); }); });
    exercise(*subject);
}
