#include "exchangefixture.h"

#include <QDir>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

const QByteArray commonNames
    = "Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;Active;AFC;Attenuation;SquelchState;"
      "SquelchValue;ChannelNo";
const QByteArray directionNames = ";DFSquelchMode;DFMeasurementTime;DFSquelch;DFBandwidth";
const QByteArray stepNames = ";DFStep;FreqSpan";

enum Part { Alarm = 1, Direction = 2, Step = 4 };

FrequencyStoreEntry entry(int parts)
{
    FrequencyStoreEntry e;
    e.SetType("a");
    e.SetComment("c");
    auto& settings = e.GetFFM_Settings();
    settings.GetFrequency().SetValue(100.126);
    settings.GetIFBandwidth().SetValue(12500);
    settings.SetAnalogDemod(FFM_Settings::AnalogDemod::FM);
    settings.SetIFStep(1234567);
    settings.GetDetail().SetActive(true);
    settings.GetDetail().SetSquelchValue(-3);
    if (parts & Alarm)
        settings.GetDetail().SetAlarm(false);
    if (parts & Direction) {
        auto& direction = e.GetDF_Settings();
        direction.SetDFMode(DF_Settings::DFMode::Gate);
        direction.SetAveraging(0.5);
        direction.GetBandwidth().SetValue(1e7);
        direction.GetDetail().SetQualityThreshold(7);
        direction.GetDetail().SetLevelThreshold(3);
        if (parts & Step)
            direction.SetDFStep(2.5);
    }
    return e;
}

FrequencyStoreList listOf(const QVector<FrequencyStoreEntry>& entries)
{
    FrequencyStoreList list;
    list.SetFrequencyStoreEntry(entries);
    return list;
}

const QVector<FrequencyStoreEntry>& entriesOf(const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry(); }

} // namespace

class MemoryScan : public ExchangeTest
{
protected:
    QByteArray exported(FrequencyStoreList list)
    {
        EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("out.csv"), list, ListType::MemoryScan));
        return read("out.csv");
    }
    bool import(const QByteArray& text)
    {
        m_list = FrequencyStoreList();
        traces().clear();
        return FileHandling().ImportCSV(write("in.csv", text), m_list, ListType::MemoryScan);
    }
    QString refusal(const QByteArray& text)
    {
        EXPECT_FALSE(import(text));
        return traces().join('|').remove("Import: Cannot export frequency store to file as error ");
    }
    const FFM_Settings& settings(int i = 0) { return entriesOf(m_list)[i].GetFFM_Settings(); }

    FrequencyStoreList m_list;
    FileHandling m_files;
};

TEST_F(MemoryScan, TheHeaderShrinksToWhatTheEntriesHave)
{
    const QByteArray common = "a;c;---;100.13;12500.00;FM;true;---;---;---;-3;---";
    const QByteArray direction = ";Gate;0.5;3;1e+07", step = ";2.5;1.23457e+06";
    for (const int parts : {0, 1, 2, 3, 6, 7}) {
        const bool alarm = parts & Alarm, df = parts & Direction, dfStep = parts & Step;
        const QByteArray names
            = commonNames + (alarm ? ";Alarm" : "") + (df ? directionNames : "") + (dfStep ? stepNames : "");
        const QByteArray row = common + (alarm ? ";false" : "") + (df ? direction : "") + (dfStep ? step : "");
        const QByteArray text = names + "\n" + row + "\n" + row + "\n";
        EXPECT_EQ(exported(listOf({entry(parts), entry(parts)})), text);

        ASSERT_TRUE(import(text));
        ASSERT_EQ(entriesOf(m_list).size(), 2);
        EXPECT_EQ(exported(m_list), text);
        const FrequencyStoreEntry& e = entriesOf(m_list)[1];
        EXPECT_EQ(e.GetFFM_Settings().GetDetail().IsAlarmSet(), alarm);
        EXPECT_EQ(e.IsDF_SettingsSet(), df);
        EXPECT_EQ(e.GetDF_Settings().GetDetail().IsQualityThresholdSet(), df);
        EXPECT_EQ(e.GetDF_Settings().GetDetail().GetQualityThreshold(), 0);
        EXPECT_EQ(e.GetFFM_Settings().IsIFStepSet(), dfStep);
        EXPECT_FALSE(e.IsAntennaSet());
    }
    const QByteArray all = commonNames + ";Alarm" + directionNames + stepNames;
    EXPECT_EQ(exported(listOf({})), all + "\n");
    EXPECT_EQ(exported(listOf({entry(0), entry(7)})),
              all + "\n" + common + ";---;---;---;---;---;---;---\n" + common + ";false" + direction + step + "\n");
    ASSERT_TRUE(import(exported(listOf({entry(2), entry(5), entry(0)}))));
    EXPECT_EQ(entriesOf(m_list)[2].IsDF_SettingsSet(), false);
}

TEST_F(MemoryScan, ReadsByName)
{
    ASSERT_TRUE(import("\xEF\xBB\xBF#x\r\nIFBandwidth;Other;Frequency;Type;ChannelNo;Active\r\nx;y;---;---;7;yes\r\n"));
    EXPECT_EQ(entriesOf(m_list)[0].GetType(), "---");
    EXPECT_EQ(settings().GetFrequency().GetValue(), 0.0);
    EXPECT_TRUE(settings().GetFrequency().IsValueSet());
    EXPECT_EQ(settings().GetDetail().GetChannelNo(), 7);
    EXPECT_FALSE(settings().GetDetail().GetActive());
    EXPECT_TRUE(settings().GetDetail().IsActiveSet());
    EXPECT_FALSE(entriesOf(m_list)[0].IsDF_SettingsSet());

    ASSERT_TRUE(import("Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;SquelchValue\nt;;---;1e3;2;---;z\n"));
    EXPECT_TRUE(entriesOf(m_list)[0].IsCommentSet());
    EXPECT_FALSE(entriesOf(m_list)[0].IsAntennaSet());
    EXPECT_FALSE(settings().IsAnalogDemodSet());
    EXPECT_EQ(settings().GetFrequency().GetValue(), 1000);
    EXPECT_TRUE(settings().GetDetail().IsSquelchValueSet());

    ASSERT_TRUE(m_files.ImportCSV(path("in.csv"), m_list, ListType::MemoryScan));
    EXPECT_EQ(entriesOf(m_list).size(), 2);
}

TEST_F(MemoryScan, TellsWhatIsWrong)
{
    EXPECT_EQ(refusal("Comment;Frequency\na;1\n"), "The column 'Type' is missing.");
    EXPECT_EQ(refusal("Type;Frequency\na\n"), "Data is corrupt!. It can't be assigned to the header!");
    EXPECT_EQ(refusal(""), path("in.csv") + " is empty!");
    const QByteArray head = "Type;Frequency;IFBandwidth;";
    EXPECT_EQ(refusal(head + "AFC\na;1;2;ON\n;1;2;ON\n"), "Data is corrupted. 'Type' is not allowed to be empty!");
    EXPECT_EQ(entriesOf(m_list).size(), 1); // what stood ahead of the bad row stays
    EXPECT_EQ(
        refusal("Type;IFBandwidth\na;1\n"),
        "FrequencyStoreEntry:Check failed. Mandatory data of the member (choice element) m_fFM_Settings is not set.");
    EXPECT_EQ(refusal(head + "DFStep\na;1;2;3\n"), "Bandwidth: Please set Value properly.");
    const struct
    {
        QByteArray column;
        QString place;
    } names[] = {{"AnalogDemod", "FFM_Settings,membername=m_analogDemod"},
                 {"AFC", "FFM_SettingsDetail,membername=m_aFC"},
                 {"Attenuation", "FFM_SettingsDetail,membername=m_attenuation"},
                 {"SquelchState", "FFM_SettingsDetail,membername=m_squelchState"},
                 {"DFSquelchMode", "DF_Settings,membername=m_dFMode"}};
    for (const auto& [column, place] : names)
        EXPECT_EQ(refusal(head + column + "\na;1;2;on\n"), "enum is not valid (classname=" + place + ")");
}

using Files = ExchangeTest;

TEST_F(Files, DispatchByListType)
{
    FileHandling files;
    FrequencyStoreList list = listOf({entry(0)});
    const auto traced
        = [](bool result) { return QString(result ? "true " : "false ") + std::exchange(traces(), {}).join('|'); };
    const auto beyond = ListType(9);
    EXPECT_EQ(traced(files.ImportCSV("none", list, ListType::DetectionResult)), "false detection results not imported");
    EXPECT_EQ(traced(files.ImportCSV("none", list, ListType::TransducerList)),
              "false find application that actually needs transducer settings?");
    EXPECT_EQ(traced(files.ImportCSV("none", list, beyond)), "true ");
    EXPECT_EQ(traced(files.ImportCSV("none", list, ListType::MemoryScan)),
              "false Import: Cannot export frequency store to file as error Can't open file for reading: 'none'");

    write("kept.csv", "kept");
    const auto exported
        = [&](ListType type) { return traced(files.ExportFrequencyStoreList(true, path("kept.csv"), list, type)); };
    EXPECT_EQ(exported(ListType::TransducerList), "false find application that actually needs transducer settings?");
    EXPECT_EQ(exported(beyond), "false ExportCSV: Cannot export frequency store to file as ListType is invalid!!");
    EXPECT_EQ(exported(ListType::Invalid),
              "false ExportCSV: Cannot export frequency store to file as ListType is invalid!!");
    EXPECT_EQ(read("kept.csv"), "kept");
    EXPECT_EQ(traced(files.ExportFrequencyStoreList(true, path("no/x.csv"), list, ListType::MemoryScan)),
              "false ExportCSV: Cannot export frequency store to file as error Can't open file for writing: '"
                  + path("no/x.csv") + "'");
    EXPECT_EQ(entriesOf(list).size(), 1);

    ErrorHandler::Instance().SetMask(~ErrorHandler::traceBit);
    EXPECT_EQ(exported(beyond), "false ");
    ErrorHandler::Instance().SetMask(~0u);
}

TEST_F(Files, XmlBothWays)
{
    FileHandling files;
    FrequencyStoreList list = listOf({entry(0), entry(7)}), loaded, again;
    EXPECT_TRUE(files.ExportFrequencyStoreList(false, path("x.xml"), list, ListType::Invalid));
    EXPECT_TRUE(files.IsValidFormat(path("x.xml")));
    EXPECT_TRUE(files.ImportXml(path("x.xml"), loaded));
    files.ImportFrequencyStoreList(false, path("x.xml"), again, ListType::NotePad);
    EXPECT_TRUE(loaded == again);
    EXPECT_EQ(xml(loaded), xml(list));

    EXPECT_FALSE(files.IsValidFormat(path("none.xml")));
    EXPECT_FALSE(files.IsValidFormat(write("c.csv", commonNames)));
    EXPECT_FALSE(
        files.IsValidFormat(write("e.xml", "<FrequencyStoreList Version='1.2'><Usage>x</Usage></FrequencyStoreList>")));
    EXPECT_THROW(files.ImportXml(path("e.xml"), loaded), OutOfRangeException);

    FrequencyStoreList empty;
    EXPECT_FALSE(files.ExportFrequencyStoreList(false, path("x.xml"), empty, ListType::MemoryScan));
    EXPECT_EQ(traces().last(), "ExportXml:: Cannot export frequency store to file as error "
                               "FrequencyStoreList: Please set FrequencyStoreEntry properly.");
    EXPECT_TRUE(files.IsValidFormat(path("x.xml")));
}
