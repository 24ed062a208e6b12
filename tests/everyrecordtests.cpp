/// What holds for every record class, tried on each.

#include "everyrecord.h"

using namespace Velmara;
using namespace Velmara::kernel;
using namespace TALLYFORM;

namespace {

template <class R> std::unique_ptr<ITallyObject> filled(RandomFiller& filler)
{
    auto record = std::make_unique<R>();
    filler.fill(*record);
    return record;
}

template <class... R> QVector<RecordClass> classesOf(RecordTypes<R...>)
{
    return {{DescriptionOf(R()), &filled<R>}...};
}

template <class R> void expectToStartEmpty()
{
    const R record;
    EXPECT_TRUE(!record.AnyData() && record.GetValidate() && record == R());
    EXPECT_TRUE(RandomFiller(1).setEverything().make<R>().AnyData());
    EXPECT_EQ(record.HasData(), record.FindFaults().isEmpty());

    const RecordDescription& of = DescriptionOf(record);
    EXPECT_EQ(&of, FindRecordDescription(R::className));
    EXPECT_TRUE(of.id == quint32(R::GetId()) && of.version == record.GetVersion());
    EXPECT_TRUE(of.element == record.GetObjectName() && of.element == R::GetStaticObjectName());

    R unused, made[3];
    unused.Reset();
    made[0].ResetToDefault();
    QDataStream none;
    made[1].SetBinary(none, 0);
    EXPECT_TRUE(made[2].SetXmlString("<" + of.element + "/>", false));
    EXPECT_TRUE(!unused.IsInitialized() && std::all_of(made, made + 3, std::mem_fn(&R::IsInitialized)));
}

} // namespace

const QVector<RecordClass>& recordClasses()
{
    static const auto classes = classesOf(AllRecords());
    return classes;
}

TEST(EveryRecord, StartsEmpty)
{
    forAll(AllRecords(), []<class R>() {
        SCOPED_TRACE(R::className);
        expectToStartEmpty<R>();
    });
}

TEST(EveryRecord, TravelsInAllForms)
{
    forRecords(12, [](const RecordDescription& of, const ITallyObject& record) {
        ASSERT_NO_THROW(record.Check());
        ASSERT_TRUE(record.HasData());
        const auto fromXml = of.make(), fromTagged = of.make(), fromPacked = of.make(), fromCompressed = of.make();
        ASSERT_TRUE(fromXml->SetXmlString(xml(record), false));
        readTagged(*fromTagged, tagged(record));
        readPacked(*fromPacked, packed(record));
        ASSERT_TRUE(fromCompressed->SetBinaryRepresentation(record.GetCompressedBinaryRepresentationAsQByteArray()));
        for (const auto* const read : {&fromXml, &fromTagged, &fromPacked, &fromCompressed})
            EXPECT_TRUE(of.areEqual(**read, record)) << xml(**read).toStdString() << '\n' << xml(record).toStdString();
        EXPECT_EQ(packed(*fromPacked), packed(record));
        EXPECT_EQ(xml(*fromTagged), xml(record));
        EXPECT_EQ(tagged(*fromXml), tagged(record));
        for (const bool isIndented : {false, true}) {
            QByteArray direct("x"), byQt("x");
            EXPECT_TRUE(record.AppendXml(direct, isIndented));
            EXPECT_TRUE(record.ITallyObject::AppendXml(byQt, isIndented));
            EXPECT_EQ(direct, byQt);
        }
    });
}

TEST(EveryRecord, WritesAnythingWithoutValidation)
{
    for (const RecordDescription* const of : RecordDescriptions()) {
        SCOPED_TRACE(of->name.toStdString());
        const auto record = of->make(), fromXml = of->make(), fromTagged = of->make(), fromPacked = of->make();
        for (const auto* const each : {&record, &fromXml, &fromTagged})
            (*each)->SetValidate(false);
        EXPECT_TRUE(fromXml->SetXmlString(xml(*record), false));
        EXPECT_EQ(xml(*fromXml), xml(*record));
        readTagged(*fromTagged, tagged(*record));
        EXPECT_EQ(xml(*fromTagged), xml(*record));
        readPacked(*fromPacked, packed(*record));
        EXPECT_TRUE(of->areEqual(*fromPacked, *record));
        EXPECT_EQ(packed(*fromPacked), packed(*record)); // a null text, which equals an empty one, is still null
    }
}

TEST(EveryRecord, SurvivesDamage)
{
    std::mt19937 random(5);
    const auto damaged = [&](QByteArray bytes) {
        bytes.truncate(int(random() % unsigned(bytes.size() + 1)));
        for (int i = int(random() % 4); i > 0 && !bytes.isEmpty(); --i)
            bytes[int(random() % unsigned(bytes.size()))] = char(random());
        return bytes;
    };
    forRecords(1, [&](const RecordDescription& of, const ITallyObject& record) {
        const QByteArray frame = tagged(record), body = packed(record);
        for (int i = 0; i < 120; ++i) {
            const auto read = of.make();
            read->SetValidate(i % 4 < 2);
            try {
                i % 2 ? readTagged(*read, damaged(frame)) : readPacked(*read, damaged(body));
            } catch (const TallyException&) {}
        }
        // every cut is noticed by the tagged form
        for (int length = 9; length < frame.size(); length += 1 + frame.size() / 50)
            EXPECT_THROW(readTagged(*of.make(), frame.left(length)), TallyException) << length;
    });
}

namespace {

/// What a site may derive from a record: it notes the calls of its operations.
template <class R> class Derived : public R
{
public:
    using R::Check;
    bool HasData() const override { return m_calls += "HasData", !m_isEmpty && R::HasData(); }
    void Reset() override { m_calls += "Reset", R::Reset(); }
    void SetValidate(bool validate) const override { m_calls += "SetValidate", R::SetValidate(validate); }
    void Check(bool flag) const override { m_calls += "Check", R::Check(flag); }
    void GetXml(QXmlStreamWriter& writer) const override { m_calls += "GetXml", R::GetXml(writer); }
    void ProcessXml(QXmlStreamReader& reader) override
    {
        m_calls += "ProcessXml";
        if constexpr (requires { this->ReadValuesFromXml(reader); })
            this->ReadValuesFromXml(reader);
        else
            R::ProcessXml(reader);
    }
    QString calls() const { return std::exchange(m_calls, {}).join(' '); }

    bool m_isEmpty = false;

private:
    mutable QStringList m_calls;
};

template <class R> void expectCallsOfWhatIsOverridden()
{
    Derived<R> record, read;
    RandomFiller(8).setEverything().fill<R>(record);
    const QString document = R(record).GetXmlString();
    EXPECT_EQ(record.GetXmlString(), document);
    EXPECT_EQ(record.calls(), "GetXml SetValidate Check SetValidate HasData");
    EXPECT_EQ(tagged(record), tagged(R(record)));
    EXPECT_EQ(record.calls(), "SetValidate Check SetValidate HasData");
    record.Check();
    EXPECT_EQ(record.calls(), "Check SetValidate");
    read.ResetToDefault();
    EXPECT_EQ(read.calls(), "Reset");
    EXPECT_TRUE(read.SetXmlString(document, false));
    EXPECT_EQ(read.calls(), "ProcessXml SetValidate");
    EXPECT_TRUE(read == record);
    record.m_isEmpty = true;
    EXPECT_TRUE(xml(record).isEmpty() && record.GetXmlString().isNull() && tagged(record).isEmpty());
}

} // namespace

TEST(DerivedRecords, AreCalledForWhatTheyOverride)
{
    forAll(RecordTypes<Coordinate, Frequency, FrequencyStoreEntry>(),
           []<class R>() { expectCallsOfWhatIsOverridden<R>(); });
}

TEST(DerivedRecords, ReadTheirElementOfALargerDocumentAndNoMore)
{
    QXmlStreamReader reader("<All><Area Version='1.0'><New/><Area><Name>in</Name></Area><ScriptID>s</ScriptID></Area>"
                            "<Area/></All>");
    ASSERT_TRUE(reader.readNextStartElement() && reader.readNextStartElement());
    Derived<Area> area;
    area.SetValidate(false);
    area.ProcessXml(reader);
    EXPECT_EQ(area.GetName(), "in");
    EXPECT_EQ(area.GetScriptID(), "s");
    EXPECT_TRUE(reader.isEndElement());
    EXPECT_TRUE(reader.readNextStartElement() && reader.name() == QLatin1String("Area"));
}
