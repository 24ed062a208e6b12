/// A document for a list, read by ourselves and by Qt's reader, which must give the same.

#include "fuzz/target.h"
#include "tests/readbyqt.h"

using namespace Velmara::fuzz;

namespace {

void requireSame(const QString& difference, const char* promise)
{
    if (!difference.isNull())
        fprintf(stderr, "%s\n", qPrintable(difference));
    require(difference.isNull(), promise);
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    const quint32 seed = input.word();
    const bool isValidated = input.bits()[0];
    const QByteArray& document = input.rest();
    requireSame(differenceOfReaders(document, seed), "both readers give the same tags, texts, errors and places");
    const QString text = textOf(document);
    requireSame(differenceOfLists(isValidated, [&](auto& list) { return list.SetXmlString(text, false); }),
                "a list read from a text is the same for both readers");
    if (text.toUtf8() == document)
        requireSame(differenceOfLists(isValidated, [&](auto& list) { return list.LoadXml(scratchFile(document)); }),
                    "a list read from a file is the same for both readers");
}
