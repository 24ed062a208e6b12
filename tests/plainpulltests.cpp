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

/// Changes a document here and there, mostly into one that is not well-formed.
QByteArray mutated(QByteArray document, RandomFiller& random)
{
    const QByteArray pieces[] = {"<",
                                 ">",
                                 "&",
                                 "\"",
                                 "'",
                                 "/",
                                 "]",
                                 "]]>",
                                 "=",
                                 " ",
                                 "\r\n",
                                 "\r",
                                 "\t",
                                 "&amp;",
                                 "&lt;",
                                 "&quot",
                                 "&#65;",
                                 "&#xFEFF;",
                                 "&other;",
                                 "<a>",
                                 "</a>",
                                 "<a/>",
                                 "<a a='1'>",
                                 "<a a=\"1\"a=\"1\"/>",
                                 "<a a='&lt;' Version = '2'>",
                                 "<a a='x' b='x' c='x' d='x' e='x' f='x' g='x' h='x' i='x'>",
                                 "<!-- x -->",
                                 "<!-- -- -->",
                                 "<![CDATA[x<y]]>",
                                 "<?xml version=\"1.0\"?>",
                                 "<?other x?>",
                                 "<!DOCTYPE a [<!ENTITY b 'c'>]>",
                                 "<Type>x</Type>",
                                 "<Type></Type >",
                                 "\xC3\xA4",
                                 "\xE4\xB8\xAD",
                                 "\xF0\x9F\x98\x80",
                                 "\xEF\xBB\xBF",
                                 "\xEF\xBF\xBE",
                                 "\xED\xA0\x80",
                                 "\xC0\x80",
                                 "\xF4\x90\x80\x80",
                                 "\xFC\x84\x80\x80",
                                 "\xE4",
                                 QByteArray("\0", 1),
                                 "\x01",
                                 "\x7F",
                                 "\xC2\x85",
                                 "1",
                                 "x",
                                 "-"};
    for (int changes = 1 + random.below(3); changes > 0; --changes) {
        const int at = random.below(document.size() + 1), size = random.below(2) ? 1 : random.below(40);
        switch (random.below(4)) {
        case 0: document.remove(at, size); break;
        case 1: document.insert(at, document.mid(random.below(document.size()), size)); break;
        case 2: document.truncate(random.below(8) ? document.size() : at); break;
        default: document.replace(at, random.below(2), pieces[random.below(int(std::size(pieces)))]);
        }
    }
    return document;
}

/// Blanks ahead of a document's first entry, so that the end of what is read at a time is somewhere in it.
QByteArray widened(QByteArray document, RandomFiller& random)
{
    constexpr int readAtATime = 1 << 16;
    const int at = document.indexOf("<FrequencyStoreEntry");
    return document.insert(qMax(0, at), QByteArray(readAtATime - random.below(document.size()), ' '));
}

/// Tells where reading goes back to the beginning.
class WatchedFile final : public QFile
{
public:
    using QFile::QFile;
    bool seek(qint64 to) override
    {
        m_isReadAgain = true;
        return QFile::seek(to);
    }
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
        QByteArray document = mutated(randomList(m_seed + i).GetXmlString().toUtf8(), random);
        if (random.below(4) == 0)
            document = widened(document, random);
        const QString difference = differenceOfReaders(document, i);
        ASSERT_TRUE(difference.isNull()) << document.toStdString() << '\n' << qPrintable(difference);
    }
}

TEST_F(PlainPullTest, ReadsListsAsQtsReaderDoes)
{
    RandomFiller random(m_seed);
    for (unsigned i = 0; i < 300; ++i) {
        ASSERT_TRUE(randomList(m_seed + i).SaveXml(path("list.xml")));
        QByteArray document = mutated(read("list.xml"), random);
        if (random.below(4) == 0)
            document = widened(document, random);
        const QString text = textOf(document);
        if (text.toUtf8() != document) // which may lose more ahead of a fault
            continue;
        write("list.xml", document);
        for (const bool isValidated : {false, true}) {
            const QString ofFile
                = differenceOfLists(isValidated, [&](auto& list) { return list.LoadXml(path("list.xml")); });
            const QString ofText
                = differenceOfLists(isValidated, [&](auto& list) { return list.SetXmlString(text, false); });
            ASSERT_TRUE(ofFile.isNull()) << document.toStdString() << '\n' << qPrintable(ofFile);
            ASSERT_TRUE(ofText.isNull()) << document.toStdString() << '\n' << qPrintable(ofText);
        }
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
