#include "note.h"

#include <cstring>
#include <numeric>

using namespace TALLYFORM;

TEST(TallyObjectTest, AMovedObjectKeepsWhatANewOneWasGiven)
{
    const auto logger = std::make_shared<Recorder>();
    Note from;
    EXPECT_TRUE(from.GetValidate() && !from.GetLogger() && from.GetVersion().isEmpty());
    EXPECT_EQ(from.GetObjectType(), ObjectTypes::None);
    from.SetLogger(logger);
    from.SetValidate(false);
    const Note to = std::move(from);
    EXPECT_EQ(from.GetObjectName(), "Note"); // NOLINT(bugprone-use-after-move): the name stays
    EXPECT_EQ(to.GetObjectName(), "Note");
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

/// What callers that were built against the table rely on.
struct Slots : ITallyObject
{
    using O = ITallyObject;
    using Places = QVector<int>;
    template <class... T> static Places of(T... operations) { return {slotOf(operations)...}; }
    template <class... T> static Places checks() { return {slotOf<void (O::*)(T...) const>(&O::Check)}; }
    template <class... T> static Places tests() { return {slotOf<bool (O::*)(T) const>(&O::IsValid)...}; }
    template <class... T> static Places setters() { return {slotOf<void (O::*)(T&) const>(&O::SetInvalid)...}; }
    template <class... T> static Places reads() { return {slotOf<bool (O::*)(T)>(&O::SetBinaryRepresentation)...}; }
    template <class... T> static Places loads() { return {slotOf<bool (O::*)(T)>(&O::LoadXml)...}; }

    static Places inTheirOrder()
    {
        return of(&O::HasData, &O::Reset) + checks<bool>() + checks<>()
             + tests<float, bool, unsigned int, qint64, const QDateTime&, const QString&, double, int>()
             + setters<float, unsigned int, qint64, QString, double, int>()
             + of(&O::GetXml, &O::GetBinary, &O::SetBinary, &O::SetXmlString) + reads<const QByteArray&, QDataStream&>()
             + of(&O::MergeTallyObject, &O::GetObjectType, &O::GetObjectName, &O::ProcessXml, &O::GetXmlString,
                  &O::GetBinaryRepresentation, &O::GetBinaryRepresentationAsQByteArray,
                  &O::GetCompressedBinaryRepresentation, &O::GetCompressedBinaryRepresentationAsQByteArray)
             + loads<const QString&, QFile&>()
             + of(&O::LoadBinary, &O::SaveXml, &O::SetValidate, &O::GetValidate, &O::SetLogger, &O::ResetLogger,
                  &O::GetVersion, &O::SetObjectType, &O::SetObjectName, &Slots::ProcessXmlStartElement);
    }
};

} // namespace

TEST(TallyObjectTest, TheTableOfOperationsIsInItsOrder)
{
    QVector<int> expected(45);
    std::iota(expected.begin(), expected.end(), 2); // behind the two destructors
    EXPECT_EQ(Slots::inTheirOrder(), expected);
}
#endif

TEST(TallyObjectTest, AnInvalidValueIsToldFromAllOthers)
{
    const Note note;
    const auto expectTold = [&](auto value) {
        EXPECT_TRUE(note.IsValid(value));
        note.SetInvalid(value);
        EXPECT_FALSE(note.IsValid(value));
    };
    expectTold(0.f), expectTold(0u), expectTold(qint64(0)), expectTold(QString("")), expectTold(0.), expectTold(0);
    EXPECT_TRUE(note.IsValid(false) && note.IsValid(QDateTime({2020, 1, 1}, {0, 0}, Qt::UTC)));
    EXPECT_FALSE(note.IsValid(QDateTime()));
}

TEST(TallyObjectTest, SkippingPassesOverExactlyTheField)
{
    QDataStream stream(QByteArray("abcdef"));
    for (const auto& [length, place] : {std::pair(-1, 0), {0, 0}, {4, 4}, {1000, 6}}) {
        Note::skipCurrentElement(stream, length, 0);
        EXPECT_EQ(stream.device()->pos(), place);
    }
}

TEST(TallyObjectTest, ATextOfAnElementIsNeverNullAndEndsOnTheElementsEnd)
{
    struct Reader : Note
    {
        using Note::GetTextValue;
    };
    QXmlStreamReader reader("<T><e/></T>");
    ASSERT_TRUE(reader.readNextStartElement());
    const QString text = Reader().GetTextValue(reader);
    EXPECT_TRUE(text.isEmpty() && !text.isNull() && reader.isEndElement());
    EXPECT_EQ(reader.readNext(), QXmlStreamReader::EndDocument);
}
