/// What an operation on files gives and traces, whatever the format.

#include "exchangefixture.h"
#include "recordvalues.h"

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

class Files : public ExchangeTest
{
protected:
    Files()
    {
        const char* const entry = "Type='a' FFM_Settings/Frequency='1' FFM_Settings/IFBandwidth='2'";
        m_list.SetFrequencyStoreEntry(recordsIn<FrequencyStoreEntry>(entry));
        write("kept.csv", "kept");
    }
    QString traced(bool result) const
    {
        const QString told = std::exchange(traces(), {}).join('|').remove(path("") + '/');
        return (result ? "true " : "false ") + told;
    }

    FileHandling m_files;
    FrequencyStoreList m_list;
};

TEST_F(Files, DispatchByListTypeAsTheirExamplesTell)
{
    expectRows("csv/dispatch.txt", [&](const QStringList& given) {
        const auto type = given[1] == "beyond" ? ListType(9) : FrequencyStoreListHelper().NameToListType(given[1]);
        if (given[0] == "import")
            return traced(m_files.ImportCSV(given[2], m_list, type));
        return traced(m_files.ExportFrequencyStoreList(true, path(given[2]), m_list, type));
    });
    EXPECT_EQ(read("kept.csv"), "kept");
    EXPECT_EQ(std::as_const(m_list).GetFrequencyStoreEntry().size(), 1);

    ErrorHandler::Instance().SetMask(~ErrorHandler::traceBit);
    EXPECT_EQ(traced(m_files.ExportFrequencyStoreList(true, path("kept.csv"), m_list, ListType(9))), "false ");
    ErrorHandler::Instance().SetMask(~0u);
}

TEST_F(Files, BothWays)
{
    FrequencyStoreList loaded, again, empty;
    EXPECT_TRUE(m_files.ExportFrequencyStoreList(false, path("x.xml"), m_list, ListType::Invalid));
    EXPECT_TRUE(m_files.ImportXml(path("x.xml"), loaded));
    m_files.ImportFrequencyStoreList(false, path("x.xml"), again, ListType::NotePad);
    EXPECT_EQ(xml(loaded), xml(m_list));
    EXPECT_TRUE(loaded == again);
    write("in.csv", "Type;Frequency;IFBandwidth\na;1;2\n");
    m_files.ImportFrequencyStoreList(true, path("in.csv"), again, ListType::Suppress);
    EXPECT_EQ(again.GetFrequencyStoreEntry().size(), 2);

    EXPECT_EQ(traced(m_files.ExportFrequencyStoreList(false, path("x.xml"), empty, ListType::MemoryScan)),
              "false ExportXml:: Cannot export frequency store to file as error "
              "FrequencyStoreList: Please set FrequencyStoreEntry properly.");
    write("e.xml", "<FrequencyStoreList Version='1.2'><Usage>x</Usage></FrequencyStoreList>");
    EXPECT_THROW(m_files.ImportXml(path("e.xml"), loaded), OutOfRangeException);
    for (const char* name : {"x.xml", "none.xml", "kept.csv", "e.xml"})
        EXPECT_EQ(m_files.IsValidFormat(path(name)), name == std::string("x.xml")) << name;
}
