/// Documents whose bytes were put together without this library: what it reads and writes must be these bytes.

#include "everyrecord.h"
#include "exchangefixture.h"
#include "goldencases.h"
#include "hextext.h"

using namespace Velmara;

using Fixtures = ExchangeTest;

TEST_F(Fixtures, StandInAllThreeForms)
{
    for (const QString name : {"store", "demodulators", "shorttime", "detection"}) {
        SCOPED_TRACE(name.toStdString());
        const bool isDetection = name == "detection";
        const RecordDescription& of
            = *FindRecordDescription(isDetection ? "FrequencyStoreListHelper" : "FrequencyStoreList");
        const QByteArray frame = fromHexText(fixture(name + ".tagged.hex").toUtf8());
        const QByteArray body = fromHexText(fixture(name + ".packed.hex").toUtf8());
        const auto fromXml = of.make(), fromTagged = of.make(), fromPacked = of.make();
        ASSERT_TRUE(fromXml->LoadXml(VELMARA_FIXTURES "/" + name + ".xml"));
        ASSERT_TRUE(fromTagged->SetBinaryRepresentation(frame));
        readPacked(*fromPacked, body);
        EXPECT_TRUE(of.areEqual(*fromXml, *fromTagged) && of.areEqual(*fromXml, *fromPacked));

        ASSERT_TRUE(fromPacked->SaveXml(path("out.xml")));
        EXPECT_EQ(read("out.xml"), fixture(name + ".xml").toUtf8());
        EXPECT_EQ(fromXml->GetBinaryRepresentationAsQByteArray(), frame);
        EXPECT_EQ(packed(*fromTagged), body);
    }
}
