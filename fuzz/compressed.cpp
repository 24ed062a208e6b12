/// A representation for any record: as it is, or compressed here, since few changes leave compressed bytes whole.

#include "fuzz/subject.h"

using namespace Velmara::fuzz;

namespace {

QByteArray compressedFrame(quint32 tag, const QByteArray& body)
{
    QByteArray frame;
    QDataStream stream(&frame, QIODevice::WriteOnly);
    stream << tag << body; // a length and the bytes
    return qCompress(frame);
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    const Subject subject = chooseSubject(input);
    TALLYFORM::ITallyObject& record = *subject.record;
    const std::bitset<8> options = input.bits();
    const QByteArray bytes = options[0] ? compressedFrame(subject.of.id, input.rest()) : input.rest();
    isDone([&] {
        QDataStream stream(bytes);
        if (options[1])
            record.LoadBinary(scratchFile(bytes));
        else if (options[2])
            record.SetBinaryRepresentation(stream);
        else
            record.SetBinaryRepresentation(bytes);
    });
    exercise(subject);
}
