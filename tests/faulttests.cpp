/// What failures tell programs: what is wrong, where in the tree, and where in the input.

#include "exchangefixture.h"
#include "recordfixture.h"

using namespace Velmara;
using namespace TALLYFORM;

using Kind = Fault::Kind;

namespace {

QString placeIn(const Fault& fault) { return fault.path + '.' + fault.member; }

/// What the exception of an action carries; of kind Other without one.
template <class Action> Fault faultOf(Action action)
{
    try {
        action();
    } catch (const TallyFormException& failure) {
        EXPECT_EQ(failure.GetFault().message, failure.GetMessage());
        return failure.GetFault();
    }
    return {};
}

FrequencyStoreEntry entry()
{
    FrequencyStoreEntry entry;
    entry.SetType("a");
    entry.GetFFM_Settings().GetFrequency().SetValue(121.5e6);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(8300);
    return entry;
}

/// Two good entries, and between them one with three faults.
FrequencyStoreList badList()
{
    FrequencyStoreList list;
    list.SetValidate(false);
    list.GetFrequencyStoreEntry() = {entry(), entry(), entry()};
    FrequencyStoreEntry& bad = list.GetFrequencyStoreEntry()[1];
    bad.SetValidate(false);
    bad.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod::Invalid);
    bad.GetFFM_Settings().GetFrequency().ResetValue();
    bad.GetLocation().GetLocationResult().resize(2);
    return list;
}

} // namespace

TEST(Faults, AreAllFoundEachAtItsMember)
{
    const FrequencyStoreList list = badList();
    QStringList places;
    for (const Fault& fault : list.FindFaults())
        places += placeIn(fault);
    EXPECT_EQ(places.mid(0, 2), QStringList({"FrequencyStoreEntry[2]/FFM_Settings/Frequency.Value",
                                             "FrequencyStoreEntry[2]/FFM_Settings.AnalogDemod"}));
    EXPECT_TRUE(places.contains("FrequencyStoreEntry[2]/Location/LocationResult[2].TimeStamp"))
        << places.join(' ').toStdString();
    EXPECT_TRUE(FrequencyStoreList(FrequencyStoreList()).FindFaults().size() == 1);
    EXPECT_FALSE(list.GetValidate()); // to look changes nothing
}

/// The first of all is that for which Check throws, but for a choice: which tells of its alternative alone.
TEST(Faults, AreThereWhereCheckThrows)
{
    forAll(AllRecords(), []<class R>() {
        for (unsigned seed = 0; seed < 8; ++seed) {
            RandomFiller filler(seed);
            R record = filler.make<R>();
            const auto& members = DescriptionOf(record).members;
            if (seed > 0)
                members[filler.below(members.size())].reset(record);
            const Fault first = faultOf([&] { record.Check(); });
            const QVector<Fault> all = record.FindFaults();
            if (first.message.isNull()) {
                EXPECT_TRUE(all.isEmpty()) << R::className;
            } else if (first.message.contains("choice")) {
                EXPECT_FALSE(all.isEmpty()) << R::className;
            } else {
                EXPECT_TRUE(std::any_of(all.begin(), all.end(),
                                        [&](const Fault& fault) {
                                            return placeIn(fault) == placeIn(first) && fault.kind == first.kind
                                                && fault.message == first.message;
                                        }))
                    << R::className << first.message.toStdString();
            }
        }
    });
}

TEST(Faults, TellWhereInTheTreeOfEveryForm)
{
    FrequencyStoreList list = badList();
    const QByteArray tagged = list.GetBinaryRepresentationAsQByteArray();
    const QString text = list.GetXmlString();
    list.SetValidate(true);
    const QString place = "FrequencyStoreEntry[2].FFM_Settings";
    EXPECT_EQ(placeIn(faultOf([&] { list.Check(); })), place);
    EXPECT_EQ(placeIn(faultOf([&] { list.GetXmlString(); })), place);
    EXPECT_EQ(placeIn(faultOf([&] { list.GetBinaryRepresentationAsQByteArray(); })), place);
    EXPECT_EQ(faultOf([&] { list.Check(); }).kind, Kind::Incomplete);

    const Fault ofXml = faultOf([&] { FrequencyStoreList().SetXmlString(text, false); });
    EXPECT_EQ(placeIn(ofXml), "FrequencyStoreEntry[2]/FFM_Settings.AnalogDemod");
    EXPECT_EQ(ofXml.kind, Kind::BadValue);
    EXPECT_EQ(ofXml.place.source, "text");
    EXPECT_EQ(ofXml.place.line, 1);
    const Fault ofTagged = faultOf([&] { FrequencyStoreList().SetBinaryRepresentation(tagged); });
    EXPECT_EQ(placeIn(ofTagged), placeIn(ofXml));
    EXPECT_GT(ofTagged.place.byte, 0);

    FrequencyStoreList good;
    good.GetFrequencyStoreEntry() = {entry(), entry()};
    QByteArray other = packed(good);
    const QByteArray version("\0002\0.\0000", 6); // of an entry
    other.replace(other.lastIndexOf(version), version.size(), QByteArray("\0009\0.\0000", 6));
    FrequencyStoreList loaded;
    const Fault ofPacked = faultOf([&] { readPacked(loaded, other); });
    EXPECT_EQ(ofPacked.path, "FrequencyStoreEntry[2]");
    EXPECT_EQ(ofPacked.kind, Kind::OtherVersion);
}

TEST(Faults, TellTheUnknownAndTheAlternative)
{
    const QString start = "<FrequencyStoreList Version=\"1.2\"><FrequencyStoreEntry Version=\"2.0\">";
    const Fault unknown = faultOf([&] { FrequencyStoreList().SetXmlString(start + "<Ype/>", false); });
    EXPECT_EQ(unknown.kind, Kind::Unknown);
    EXPECT_EQ(placeIn(unknown), "FrequencyStoreEntry[1].Ype");

    FrequencyStoreEntry tuned;
    tuned.SetType("a");
    tuned.GetShortTime_Settings().GetRange();
    const QVector<Fault> faults = tuned.FindFaults();
    ASSERT_FALSE(faults.isEmpty());
    EXPECT_TRUE(faults[0].path.startsWith("ShortTime_Settings"));
}

using FaultFiles = ExchangeTest;

TEST_F(FaultFiles, AreToldByWhatThrowsInPlaceOfFalse)
{
    FrequencyStoreList list = badList();
    const auto read = [&](const QString& file) {
        return faultOf([&] {
            QFile document(file);
            FrequencyStoreList().ReadXml(document);
        });
    };
    const Fault missing = read(path("missing.xml"));
    EXPECT_EQ(missing.kind, Kind::Unreadable);
    EXPECT_EQ(missing.place.source, path("missing.xml"));
    const Fault other = read(write("other.xml", "<DetectionResultList/>"));
    EXPECT_EQ(other.kind, Kind::OtherObject);
    EXPECT_EQ(other.member, "DetectionResultList");
    const Fault broken = read(write("broken.xml", "<FrequencyStoreList>\n<"));
    EXPECT_EQ(broken.kind, Kind::Damaged);
    EXPECT_EQ(broken.place.line, 2);
    EXPECT_EQ(faultOf([&] { FrequencyStoreList().ReadBinary(path("broken.xml")); }).kind, Kind::Damaged);
    EXPECT_EQ(faultOf([&] { list.WriteXml(path("no/folder")); }).kind, Kind::Unwritable);
    list.SetValidate(true);
    EXPECT_EQ(faultOf([&] { list.WriteXml(path("bad.xml")); }).path, "FrequencyStoreEntry[2]");
    EXPECT_FALSE(QFile::exists(path("bad.xml")));
}
