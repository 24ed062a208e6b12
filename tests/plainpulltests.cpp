/// Documents are read by ourselves, and by Qt's reader where that is not sure to be the same.

#include "exchangefixture.h"
#include "randomfiller.h"
#include "readbyqt.h"

using namespace Velmara;
using namespace TALLYFORM;

namespace {

FrequencyStoreList randomList(unsigned seed, const QStringList& texts = {})
{
    return RandomFiller(seed).setTexts(texts).make<FrequencyStoreList>();
}

/// In percent encoding.
const char* const pieces
    = "< > & \" ' / ] ]]> = %20 %0D%0A %0D %09 &amp; &lt; &quot &#65; &#xFEFF; &other; <a> </a> <a/> <a%20a='1'> "
      "<a%20a=\"1\"a=\"1\"/> <a%20a='&lt;'%20Version%20=%20'2'> "
      "<a%20a='x'%20b='x'%20c='x'%20d='x'%20e='x'%20f='x'%20g='x'%20h='x'%20i='x'> "
      "<!--%20x%20--> <!--%20--%20--> <![CDATA[x<y]]> <?xml%20version=\"1.0\"?> <?other%20x?> "
      "<!DOCTYPE%20a%20[<!ENTITY%20b%20'c'>]> <Type>x</Type> <Type></Type%20> %C3%A4 %E4%B8%AD %F0%9F%98%80 "
      "%EF%BB%BF %EF%BF%BE %ED%A0%80 %C0%80 %F4%90%80%80 %FC%84%80%80 %E4 %00 %01 %7F %C2%85 1 x -";

/// Blanks ahead of a document's first entry, so that the end of what is read at a time is somewhere in it.
QByteArray widened(QByteArray document, RandomFiller& random)
{
    constexpr int readAtATime = 1 << 16;
    const int at = document.indexOf("<FrequencyStoreEntry");
    return document.insert(qMax(0, at), QByteArray(readAtATime - random.below(document.size()), ' '));
}

/// A document that is changed here and there, mostly into one that is not well-formed.
QByteArray mutated(QByteArray document, RandomFiller& random)
{
    static const QList<QByteArray> encoded = QByteArray(pieces).split(' ');
    for (int changes = 1 + random.below(3); changes > 0; --changes) {
        const int at = random.below(document.size() + 1), size = random.below(2) ? 1 : random.below(40);
        switch (random.below(4)) {
        case 0: document.remove(at, size); break;
        case 1: document.insert(at, document.mid(random.below(document.size()), size)); break;
        case 2: document.truncate(random.below(8) ? document.size() : at); break;
        default:
            document.replace(at, random.below(2),
                             QByteArray::fromPercentEncoding(encoded[random.below(encoded.size())]));
        }
    }
    return random.below(4) == 0 ? widened(document, random) : document;
}

/// Tells where reading goes back to the beginning.
struct WatchedFile final : QFile
{
    using QFile::QFile;
    bool seek(qint64 to) override { return m_isReadAgain = true, QFile::seek(to); }
    bool m_isReadAgain = false;
};

} // namespace

class PlainPullTest : public ExchangeTest
{
protected:
    /// Another one at each repetition in another order.
    const unsigned m_seed = unsigned(testing::UnitTest::GetInstance()->random_seed()) * 10007;
};

TEST_F(PlainPullTest, GivesTheTagsAndTextsOfQtsReader)
{
    RandomFiller random(m_seed);
    for (unsigned i = 0; i < 1000; ++i) {
        const QByteArray document = mutated(randomList(m_seed + i).GetXmlString().toUtf8(), random);
        const QString difference = differenceOfReaders(document, i);
        ASSERT_TRUE(difference.isNull()) << document.toStdString() << '\n' << qPrintable(difference);
    }
}

TEST_F(PlainPullTest, ReadsListsAsQtsReaderDoes)
{
    RandomFiller random(m_seed);
    for (unsigned i = 0; i < 300 && !HasFailure(); ++i) {
        ASSERT_TRUE(randomList(m_seed + i).SaveXml(path("list.xml")));
        const QByteArray document = mutated(read("list.xml"), random);
        const QString text = textOf(document);
        if (text.toUtf8() != document) // which may lose more ahead of a fault
            continue;
        write("list.xml", document);
        const auto expectSame = [&](auto read) {
            for (const bool isValidated : {false, true}) {
                const QString difference = differenceOfLists(isValidated, read);
                ASSERT_TRUE(difference.isNull()) << document.toStdString() << '\n' << qPrintable(difference);
            }
        };
        expectSame([&](FrequencyStoreList& list) { return list.LoadXml(path("list.xml")); });
        expectSame([&](FrequencyStoreList& list) { return list.SetXmlString(text, false); });
    }
}

TEST_F(PlainPullTest, NeedsNoHelpWithWhatIsSaved)
{
    const QStringList texts{"a & b <c> \"d\" 'e' [[f]]>", QString::fromUtf8("\u00e4\u20ac\u4e2d\U0001F600\x7f"),
                            "\n\t ", ""};
    for (unsigned seed = 0; seed < 100; ++seed) {
        ASSERT_TRUE(randomList(seed, texts).SaveXml(path("list.xml")));
        WatchedFile file(path("list.xml"));
        FrequencyStoreList list;
        ASSERT_TRUE(list.LoadXml(file));
        EXPECT_FALSE(file.m_isReadAgain);
        EXPECT_EQ(list, randomList(seed, texts));
    }
    WatchedFile remarked(
        write("list.xml", read("list.xml").replace("</FrequencyStoreList>", "<!-- --></FrequencyStoreList>")));
    EXPECT_TRUE(FrequencyStoreList().LoadXml(remarked));
    EXPECT_TRUE(remarked.m_isReadAgain);
}

TEST_F(PlainPullTest, DoesNotGoOverALongPieceAgainAndAgain)
{
    constexpr int size = 1 << 22;
    for (const QByteArray& piece : {"<a>" + QByteArray(size, 'x') + "</a>", "<a>" + QByteArray(size, ' ') + "<b/></a>",
                                    '<' + QByteArray(size, 'a') + "/>", "<a a='" + QByteArray(size, 'x') + "'/>"}) {
        PiecesInput input(piece);
        PlainPull document(input);
        EXPECT_EQ(document.next(), XmlPull::Tag::Start);
        document.elementText();
        EXPECT_EQ(document.next(), XmlPull::Tag::None);
        EXPECT_LT(input.m_reads, 30) << "each of which goes over the piece so far";
        EXPECT_FALSE(document.hasError());
    }
}
