/// What holds for every record class, tried on each.

#include "frequencystore/kernel/forms/packed.h"
#include "recordfixture.h"

using namespace Velmara;
using namespace Velmara::kernel;
using namespace TALLYFORM;

namespace {

template <class List> struct TypesOf;
template <class... R> struct TypesOf<RecordTypes<R...>>
{
    using Type = testing::Types<R...>;
};

struct ClassNames
{
    template <class R> static std::string GetName(int) { return R::className; }
};

} // namespace

template <class R> class EveryRecord : public testing::Test
{};
TYPED_TEST_SUITE(EveryRecord, TypesOf<AllRecords>::Type, ClassNames);

TYPED_TEST(EveryRecord, StartsEmpty)
{
    // those that may be written with nothing in them
    const QStringList alwaysHaveData{"ChannelSelection",
                                     "DFDataDetail",
                                     "Demodulator_Settings",
                                     "FFM_SettingsDetail",
                                     "FrequencyStoreEntryLocation",
                                     "MT_Settings",
                                     "PScanSettings",
                                     "ShapeDetectorSettings",
                                     "ShortTime_Settings",
                                     "Station"};
    const TypeParam record;
    EXPECT_EQ(record.HasData(), alwaysHaveData.contains(TypeParam::className));
    EXPECT_FALSE(record.AnyData());
    EXPECT_TRUE(record.GetValidate());
    static_assert(std::is_same_v<decltype(TypeParam::GetStaticObjectName()), QString>);
    EXPECT_EQ(record.GetObjectName(), TypeParam::GetStaticObjectName());
    EXPECT_EQ(record.GetVersion().isEmpty(), !IsVersioned<TypeParam>);
    EXPECT_TRUE(record == TypeParam());

    TypeParam reset;
    reset.Reset();
    EXPECT_FALSE(reset.IsInitialized());
    reset.ResetToDefault();
    EXPECT_TRUE(reset.IsInitialized());
}

TYPED_TEST(EveryRecord, TravelsInAllForms)
{
    for (unsigned seed = 0; seed < 12; ++seed) {
        RandomFiller filler(seed);
        if (seed == 0)
            filler.setEverything();
        const TypeParam record = filler.template make<TypeParam>();
        ASSERT_EQ(messageOf<TallyException>([&] { record.Check(); }), "none");
        ASSERT_TRUE(record.HasData());

        TypeParam fromXml, fromTagged, fromPacked, fromCompressed;
        ASSERT_TRUE(fromXml.SetXmlString(xml(record), false));
        readTagged(fromTagged, tagged(record));
        readPacked(fromPacked, packed(record));
        ASSERT_TRUE(fromCompressed.SetBinaryRepresentation(record.GetCompressedBinaryRepresentationAsQByteArray()));
        EXPECT_TRUE(fromXml == record) << xml(record).toStdString();
        EXPECT_TRUE(fromTagged == record) << xml(record).toStdString();
        EXPECT_TRUE(fromPacked == record) << xml(record).toStdString();
        EXPECT_TRUE(fromCompressed == record);
        EXPECT_EQ(packed(fromPacked), packed(record));
        EXPECT_EQ(xml(fromTagged), xml(record));
        EXPECT_EQ(tagged(fromXml), tagged(record));
    }
}

TYPED_TEST(EveryRecord, WritesTheBytesThatQtWrites)
{
    RandomFiller some(3), all(4);
    all.setEverything();
    for (int i = 0; i < 10; ++i) {
        const TypeParam record = i == 0 ? all.make<TypeParam>() : some.make<TypeParam>();
        for (const bool isIndented : {false, true}) {
            QByteArray direct("x"), byWriter("x");
            EXPECT_TRUE(record.AppendXml(direct, isIndented));
            EXPECT_TRUE(record.ITallyObject::AppendXml(byWriter, isIndented));
            EXPECT_EQ(direct, byWriter);
        }
    }
}

TYPED_TEST(EveryRecord, CopiesPart)
{
    const TypeParam record = RandomFiller(1).setEverything().make<TypeParam>();
    const QByteArray before = packed(record);
    TypeParam copy = record, assigned, moved = TypeParam(record);
    assigned = record;
    EXPECT_TRUE(copy == record && assigned == record && moved == record);

    copy.SetValidate(false);
    EXPECT_TRUE(record.GetValidate());
    copy.Reset();
    assigned.ResetToDefault();
    RandomFiller(2).fill(moved);
    EXPECT_EQ(packed(record), before);
    EXPECT_FALSE(copy.AnyData());

    TypeParam target;
    target = std::move(moved);
    EXPECT_FALSE(moved.IsInitialized());
    EXPECT_EQ(moved.GetObjectName(), TypeParam::GetStaticObjectName());
    target = TypeParam();
    EXPECT_FALSE(target.IsInitialized());
}

TYPED_TEST(EveryRecord, DemandsItsMandatoryMembers)
{
    const TypeParam whole = RandomFiller(3).setEverything().make<TypeParam>();
    visit<mandatories>(Record<TypeParam>::ownData(whole), [&]<class T>(const Member& m, const T&) {
        TypeParam lacking = whole;
        visit(Record<TypeParam>::ownData(lacking), [&](const Member& other, auto& field) {
            if (other.bit == m.bit)
                clear(Record<TypeParam>::ownData(lacking), other, field);
        });
        EXPECT_FALSE(lacking.HasData()) << m.name.data();
        for (const bool validate : {true, false}) {
            lacking.SetValidate(validate);
            const QString message = messageOf<OutOfRangeException>([&] { lacking.Check(); });
            if constexpr (IsRecord<T>) // which names what it lacks itself
                EXPECT_TRUE(message.contains(": Please set ")) << message.toStdString();
            else
                EXPECT_EQ(message, lacking.GetObjectName() + ": Please set " + m.name + " properly.");
        }
        lacking.SetValidate(true);
        EXPECT_THROW(xml(lacking), OutOfRangeException);
        EXPECT_THROW(tagged(lacking), OutOfRangeException);
    });
}

TYPED_TEST(EveryRecord, WritesAnythingWithoutValidation)
{
    TypeParam record, read;
    record.SetValidate(false);
    read.SetValidate(false);
    EXPECT_TRUE(read.SetXmlString(xml(record), false));
    EXPECT_EQ(xml(read), xml(record));
    TypeParam fromTagged, fromPacked;
    fromTagged.SetValidate(false);
    readTagged(fromTagged, tagged(record));
    EXPECT_EQ(xml(fromTagged), xml(record));
    readPacked(fromPacked, packed(record));
    EXPECT_TRUE(fromPacked == record);
    EXPECT_EQ(packed(fromPacked), packed(record)); // a null text, which equals an empty one, is still null
}

TYPED_TEST(EveryRecord, RefusesBadValues)
{
    TypeParam record;
    visit(Record<TypeParam>::ownData(record), [&]<class T>(const Member& m, T& field) {
        auto& data = Record<TypeParam>::ownData(record);
        const auto refuses = [&](const T& value) {
            return messageOf<OutOfRangeException>([&] { assign(record, data, m, field, value); }) != "none";
        };
        bool isRefused = true;
        if constexpr (std::is_same_v<T, QString>)
            isRefused = refuses(QString());
        else if constexpr (IsEnum<T>)
            isRefused = refuses(T(-1)) && refuses(T(m.names().size()));
        else if constexpr (std::is_same_v<T, double>)
            isRefused = !m.isBounded || (refuses(m.upper + 1) && refuses(m.lower - 1) && refuses(qQNaN()));
        EXPECT_TRUE(isRefused && !data.isSet(m)) << m.name.data();
    });
}

TYPED_TEST(EveryRecord, IsMadeByInputWithoutContent)
{
    TypeParam fromXml, fromTagged;
    EXPECT_TRUE(fromXml.SetXmlString("<" + fromXml.GetObjectName() + "/>", false));
    QDataStream none;
    fromTagged.SetBinary(none, 0);
    EXPECT_TRUE(fromXml.IsInitialized() && fromTagged.IsInitialized());

    visit(Record<TypeParam>::ownData(TypeParam()), []<class T>(const Member& m, const T& member) {
        if constexpr (IsRecord<T>) {
            TypeParam parents[2];
            EXPECT_TRUE(parents[0].SetXmlString(
                QString("<%1><%2/></%1>").arg(parents[0].GetObjectName(), member.GetObjectName()), false));
            readTagged(parents[1], bytesOf([&](QDataStream& out) { out << 0 << 8 << m.tag << 0; }));
            for (const TypeParam& parent : parents)
                visit(*Record<TypeParam>::peekData(parent), [&]<class Other>(const Member& other, const Other& child) {
                    if constexpr (IsRecord<Other>) {
                        EXPECT_EQ(child.IsInitialized(), other.bit == m.bit) << other.name.data();
                    }
                });
        }
    });
}

TYPED_TEST(EveryRecord, StaysAsItWasIfAPackedStreamIsOfAnotherVersion)
{
    if constexpr (IsVersioned<TypeParam>) {
        QByteArray foreign = packed(RandomFiller(6).make<TypeParam>());
        using Data = std::remove_reference_t<decltype(Record<TypeParam>::ownData(TypeParam()))>;
        foreign[bytesOfBits<Data::count> + 5] = '9';
        TypeParam record = RandomFiller(7).setEverything().make<TypeParam>();
        const QByteArray before = packed(record);
        EXPECT_THROW(readPacked(record, foreign), BinaryParsingException);
        EXPECT_EQ(packed(record), before);
    }
}

namespace {

/// What a site may derive from a record: it counts the calls of its operations.
template <class R> class Derived : public R
{
public:
    using R::Check;
    bool HasData() const override { return ++m_asked, !m_isEmpty && R::HasData(); }
    void Reset() override { ++m_resets, R::Reset(); }
    void SetValidate(bool validate) const override { ++m_flags, R::SetValidate(validate); }
    void Check(bool flag) const override { ++m_checks, R::Check(flag); }
    void GetXml(QXmlStreamWriter& writer) const override { ++m_written, R::GetXml(writer); }
    void ProcessXml(QXmlStreamReader& reader) override
    {
        ++m_read;
        if constexpr (requires { this->ReadValuesFromXml(reader); })
            this->ReadValuesFromXml(reader);
        else
            R::ProcessXml(reader);
    }

    bool m_isEmpty = false;
    mutable int m_asked = 0, m_checks = 0, m_written = 0, m_flags = 0;
    int m_read = 0, m_resets = 0;
};

} // namespace

TYPED_TEST(EveryRecord, CallsWhatAClassDerivedFromItOverrides)
{
    Derived<TypeParam> record, read;
    RandomFiller(8).setEverything().fill<TypeParam>(record);
    const QString document = TypeParam(record).GetXmlString();
    EXPECT_EQ(record.GetXmlString(), document);
    EXPECT_EQ(record.m_written, 1);
    EXPECT_EQ(record.m_checks, 1);
    EXPECT_EQ(record.m_asked, 1);
    EXPECT_EQ(tagged(record), tagged(TypeParam(record)));
    EXPECT_EQ(record.m_checks, 2);
    EXPECT_EQ(record.m_asked, 2);
    record.Check();
    EXPECT_EQ(record.m_checks, 3);
    EXPECT_GE(record.m_flags, 3);
    read.ResetToDefault();
    EXPECT_EQ(read.m_resets, 1);
    EXPECT_TRUE(read.SetXmlString(document, false));
    EXPECT_EQ(read.m_read, 1);
    EXPECT_TRUE(read == record);
    record.m_isEmpty = true;
    EXPECT_TRUE(xml(record).isEmpty() && record.GetXmlString().isNull() && tagged(record).isEmpty());
}

TYPED_TEST(EveryRecord, SurvivesDamage)
{
    const TypeParam record = RandomFiller(4).setEverything().make<TypeParam>();
    const QByteArray frame = tagged(record), body = packed(record);
    std::mt19937 random(5);
    const auto damage = [&](QByteArray bytes) {
        bytes.truncate(int(random() % unsigned(bytes.size() + 1)));
        for (int i = int(random() % 4); i > 0 && !bytes.isEmpty(); --i)
            bytes[int(random() % unsigned(bytes.size()))] = char(random());
        return bytes;
    };
    for (int i = 0; i < 60; ++i) {
        TypeParam a, b;
        a.SetValidate(i % 2);
        b.SetValidate(i % 2);
        try {
            readTagged(a, damage(frame));
        } catch (const TallyException&) {}
        try {
            readPacked(b, damage(body));
        } catch (const TallyException&) {}
    }
    // every cut is noticed by the tagged form
    for (int length = 9; length < frame.size(); length += 1 + frame.size() / 50) {
        TypeParam cut;
        EXPECT_THROW(readTagged(cut, frame.left(length)), TallyException);
    }
}
