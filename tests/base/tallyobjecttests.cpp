#include "note.h"

#include <cstring>

using namespace TALLYFORM;

TEST(TallyObjectTest, ANewObjectValidatesAndHasNothingElse)
{
    const Note note;
    EXPECT_TRUE(note.GetValidate());
    EXPECT_EQ(note.GetLogger(), nullptr);
    EXPECT_EQ(note.GetObjectType(), ObjectTypes::None);
    EXPECT_TRUE(note.GetVersion().isEmpty());
}

TEST(TallyObjectTest, AMovedObjectKeepsItsName)
{
    const auto logger = std::make_shared<Recorder>();
    Note from;
    from.SetLogger(logger);
    from.SetValidate(false);
    const Note to = std::move(from);
    EXPECT_EQ(to.GetObjectName(), from.GetObjectName()); // NOLINT(bugprone-use-after-move): the name stays
    EXPECT_EQ(to.GetLogger(), logger);
    EXPECT_FALSE(to.GetValidate());
    to.ResetLogger();
    EXPECT_EQ(to.GetLogger(), nullptr);
}

#ifndef Q_OS_WIN
namespace {

/// Where a class has its virtual operations: a pointer to one holds its place in the table, in bytes and plus one.
template <class Operation> int slotOf(Operation operation)
{
    std::ptrdiff_t words[2];
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words, &operation, sizeof words);
    return int((words[0] - 1) / std::ptrdiff_t(sizeof(void*)));
}

/// What callers that were built against the table rely on: the two destructors, and then this order.
struct Slots : ITallyObject
{
    template <class Value> using Test = bool (ITallyObject::*)(Value) const;
    template <class Value> using Setter = void (ITallyObject::*)(Value&) const;

    static QVector<int> inTheirOrder()
    {
        using O = ITallyObject;
        return {
            slotOf(&O::HasData),
            slotOf(&O::Reset),
            slotOf<void (O::*)(bool) const>(&O::Check),
            slotOf<void (O::*)() const>(&O::Check),
            slotOf<Test<float>>(&O::IsValid),
            slotOf<Test<bool>>(&O::IsValid),
            slotOf<Test<unsigned int>>(&O::IsValid),
            slotOf<Test<qint64>>(&O::IsValid),
            slotOf<Test<const QDateTime&>>(&O::IsValid),
            slotOf<Test<const QString&>>(&O::IsValid),
            slotOf<Test<double>>(&O::IsValid),
            slotOf<Test<int>>(&O::IsValid),
            slotOf<Setter<float>>(&O::SetInvalid),
            slotOf<Setter<unsigned int>>(&O::SetInvalid),
            slotOf<Setter<qint64>>(&O::SetInvalid),
            slotOf<Setter<QString>>(&O::SetInvalid),
            slotOf<Setter<double>>(&O::SetInvalid),
            slotOf<Setter<int>>(&O::SetInvalid),
            slotOf(&O::GetXml),
            slotOf(&O::GetBinary),
            slotOf(&O::SetBinary),
            slotOf(&O::SetXmlString),
            slotOf<bool (O::*)(const QByteArray&)>(&O::SetBinaryRepresentation),
            slotOf<bool (O::*)(QDataStream&)>(&O::SetBinaryRepresentation),
            slotOf(&O::MergeTallyObject),
            slotOf(&O::GetObjectType),
            slotOf(&O::GetObjectName),
            slotOf(&O::ProcessXml),
            slotOf(&O::GetXmlString),
            slotOf(&O::GetBinaryRepresentation),
            slotOf(&O::GetBinaryRepresentationAsQByteArray),
            slotOf(&O::GetCompressedBinaryRepresentation),
            slotOf(&O::GetCompressedBinaryRepresentationAsQByteArray),
            slotOf<bool (O::*)(const QString&)>(&O::LoadXml),
            slotOf<bool (O::*)(QFile&)>(&O::LoadXml),
            slotOf(&O::LoadBinary),
            slotOf(&O::SaveXml),
            slotOf(&O::SetValidate),
            slotOf(&O::GetValidate),
            slotOf(&O::SetLogger),
            slotOf(&O::ResetLogger),
            slotOf(&O::GetVersion),
            slotOf(&O::SetObjectType),
            slotOf(&O::SetObjectName),
            slotOf(&Slots::ProcessXmlStartElement),
        };
    }
};

} // namespace

TEST(TallyObjectTest, TheTableOfOperationsIsInItsOrder)
{
    const QVector<int> places = Slots::inTheirOrder();
    constexpr int destructors = 2;
    for (int i = 0; i < places.size(); ++i)
        EXPECT_EQ(places[i], destructors + i);
}
#endif

template <class T> class InvalidValueTest : public testing::Test
{};
using ValueTypes = testing::Types<float, unsigned int, qint64, QString, double, int>;
TYPED_TEST_SUITE(InvalidValueTest, ValueTypes);

TYPED_TEST(InvalidValueTest, IsToldFromAllOthers)
{
    const Note note;
    TypeParam value{};
    if constexpr (std::is_same_v<TypeParam, QString>)
        value = "";
    EXPECT_TRUE(note.IsValid(value));
    note.SetInvalid(value);
    EXPECT_FALSE(note.IsValid(value));
}

TEST(TallyObjectTest, ABoolIsAlwaysValidAndADateTimeOnlyIfItExists)
{
    EXPECT_TRUE(Note().IsValid(false));
    EXPECT_FALSE(Note().IsValid(QDateTime()));
    EXPECT_TRUE(Note().IsValid(QDateTime({2020, 1, 1}, {0, 0}, Qt::UTC)));
}

TEST(TallyObjectTest, SkippingPassesOverExactlyTheField)
{
    QDataStream stream(QByteArray("abcdef"));
    for (const auto& [length, place] : {std::pair(-1, 0), {0, 0}, {4, 4}, {1000, 6}}) {
        Note::skipCurrentElement(stream, length, 0);
        EXPECT_EQ(stream.device()->pos(), place);
    }
}

TEST(ElementTextTest, IsNeverNullAndEndsOnTheElementsEnd)
{
    struct Reader : Note
    {
        using Note::GetTextValue;
    };
    QXmlStreamReader reader("<T><e/></T>");
    ASSERT_TRUE(reader.readNextStartElement());
    const QString text = Reader().GetTextValue(reader);
    EXPECT_TRUE(text.isEmpty() && !text.isNull());
    EXPECT_TRUE(reader.isEndElement());
    EXPECT_EQ(reader.readNext(), QXmlStreamReader::EndDocument);
}
