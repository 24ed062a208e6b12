#include "note.h"

#include <gtest/gtest.h>

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
    const auto logger = std::make_shared<Memory>();
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

template <class T> class InvalidValueTest : public testing::Test
{};
using ValueTypes = testing::Types<float, unsigned int, qint64, QString, double, int>;
TYPED_TEST_SUITE(InvalidValueTest, ValueTypes);

TYPED_TEST(InvalidValueTest, IsToldFromAllOthers)
{
    const Note note;
    TypeParam value{};
    if constexpr (std::is_same_v<TypeParam, QString>)
        value = QStringLiteral("");
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
    const QByteArray bytes("abcdef");
    QDataStream stream(bytes);
    Note::skipCurrentElement(stream, -1, 0);
    Note::skipCurrentElement(stream, 0, 0);
    EXPECT_EQ(stream.device()->pos(), 0);
    Note::skipCurrentElement(stream, 4, 0);
    EXPECT_EQ(stream.device()->pos(), 4);
    Note::skipCurrentElement(stream, 1000, 0);
    EXPECT_TRUE(stream.atEnd());
}

TEST(ElementTextTest, JoinsAllTextAndEndsOnTheElementsEnd)
{
    QXmlStreamReader reader(QString::fromUtf8("<T>a<b>b<T>c</T></b><![CDATA[<d>]]><!-- no --><e/></T>"));
    ASSERT_TRUE(reader.readNextStartElement());
    ElementText text;
    EXPECT_EQ(ReadElementText(reader, text).toString(), QStringLiteral("abc<d>"));
    EXPECT_TRUE(reader.isEndElement());
    EXPECT_EQ(reader.readNext(), QXmlStreamReader::EndDocument);
}

TEST(ElementTextTest, AnEmptyElementHasAnEmptyTextThatIsNotNull)
{
    struct Reader : Note
    {
        using Note::GetTextValue;
    };
    QXmlStreamReader reader(QString::fromUtf8("<T/>"));
    ASSERT_TRUE(reader.readNextStartElement());
    const QString text = Reader().GetTextValue(reader);
    EXPECT_TRUE(text.isEmpty());
    EXPECT_FALSE(text.isNull());
}
