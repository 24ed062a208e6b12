#include "frequencystore/kernel/forms/tagged.h"

#include "base/exceptions.h"

namespace Velmara::kernel {

int reserveWord(BinarySink& out)
{
    const int position = out.position();
    out << quint32(0);
    return position;
}

void closeLength(BinarySink& out, int position) { out.patch(position, quint32(out.position() - position - 4)); }

void putBytes(BinarySink& out, QLatin1String ascii)
{
    out << (ascii.isNull() ? QByteArray() : QByteArray::fromRawData(ascii.data(), ascii.size()));
}

void refuseLength(const ITallyObject& self)
{
    throw TALLYFORM::BinaryParsingException(
        self.GetObjectName()
            + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation"),
        Fault::Kind::Damaged);
}

} // namespace Velmara::kernel
