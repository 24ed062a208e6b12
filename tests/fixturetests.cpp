/// Documents whose bytes were put together without this library: what it reads and writes must be these bytes.

#include "exchangefixture.h"
#include "hextext.h"

using namespace Velmara;

namespace {

const QString folder = VELMARA_FIXTURES "/";

QByteArray contentOf(const QString& name)
{
    QFile file(folder + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll();
}

QByteArray bytesIn(const QString& name) { return fromHexText(contentOf(name)); }

template <class R> QByteArray frameOf(const R& record)
{
    return bytesOf([&](QDataStream& stream) { record.GetBinary(stream, int(R::GetId()), true); });
}

} // namespace

class Fixtures : public ExchangeTest
{
protected:
    template <class R> void expectToStandIn(const QString& name)
    {
        const QByteArray frame = bytesIn(name + ".tagged.hex"), body = bytesIn(name + ".packed.hex");
        R fromXml, fromTagged, fromPacked;
        ASSERT_TRUE(fromXml.LoadXml(folder + name + ".xml"));
        readTagged(fromTagged, frame);
        readPacked(fromPacked, body);
        EXPECT_TRUE(fromXml == fromTagged);
        EXPECT_TRUE(fromXml == fromPacked);

        ASSERT_TRUE(fromPacked.SaveXml(path("out.xml")));
        EXPECT_EQ(read("out.xml"), contentOf(name + ".xml"));
        EXPECT_EQ(frameOf(fromXml), frame);
        EXPECT_EQ(packed(fromTagged), body);
    }
};

TEST_F(Fixtures, StandInAllThreeForms)
{
    for (const char* name : {"store", "demodulators", "shorttime"}) {
        SCOPED_TRACE(name);
        expectToStandIn<FrequencyStoreList>(name);
    }
    SCOPED_TRACE("detection");
    expectToStandIn<FrequencyStoreListHelper>("detection");
}
