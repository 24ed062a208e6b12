/// The CSV formats of notepads and of lists of frequencies to suppress or to leave out.

#include "frequencystore/csvformat.h"

namespace Velmara {

const FileHandling::Format& FileHandling::notePad()
{
    static const Format format{suppress().columns + QVector<Column>{Columns::analogDemod()}};
    return format;
}

const FileHandling::Format& FileHandling::suppress()
{
    static const Format format{{Columns::type(), Columns::comment(), Columns::frequency(), Columns::bandwidth()}};
    return format;
}

void FileHandling::ExportNotePad(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report)
{
    writeFormat(file, helper, notePad(), report);
}

void FileHandling::ImportNotePad(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    readFormat(file, list, notePad(), report);
}

void FileHandling::ExportSuppress(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report)
{
    writeFormat(file, helper, suppress(), report);
}

void FileHandling::ImportSuppress(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    readFormat(file, list, suppress(), report);
}

void FileHandling::ExportNOI(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report)
{
    ExportSuppress(file, helper, report);
}

void FileHandling::ImportNOI(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    ImportSuppress(file, list, report);
}

} // namespace Velmara
