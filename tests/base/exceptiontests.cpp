#include "base/errorhandler.h"
#include "note.h"

#include <QRegularExpression>

using namespace TALLYFORM;

TEST(ExceptionTest, TheMessageIsWhatWasGivenAndOutlivesIt)
{
    const auto make = [] { return OutOfRangeException(QString::fromUtf8("5 \u00b5V")); };
    const OutOfRangeException failure = make();
    const OutOfRangeException copy = failure;
    EXPECT_STREQ(copy.what(), "5 \xc2\xb5V");
    EXPECT_EQ(copy.GetMessage(), QString::fromUtf8("5 \u00b5V"));
    EXPECT_STREQ(TallyException(QString()).what(), "");
}

TEST(ExceptionTest, DetailNamesClassMessageAndOrigin)
{
    InvalidXmlException failure("Unknown Tag");
    EXPECT_EQ(failure.GetDetail(), "InvalidXmlException: Unknown Tag");
    failure.GetFault().place = {.source = "list.xml", .line = 12, .column = 5};
    const TallyException& base = failure;
    const TallyFormException& root = base;
    EXPECT_EQ(root.GetDetail(), "InvalidXmlException: Unknown Tag (list.xml, line 12, column 5)");
    EXPECT_EQ(root.GetMessage(), "Unknown Tag");
}

TEST(TraceTest, FailuresThatGiveFalseAreTracedWithTheirPlaceUnderTheMask)
{
    static QStringList traces;
    const QtMessageHandler previous
        = qInstallMessageHandler([](QtMsgType, const QMessageLogContext& at, const QString& text) {
              traces += QString("%1|%2|%3|%4").arg(at.category, at.file).arg(at.line).arg(text);
          });
    EXPECT_TRUE(ErrorHandler::Instance() & 32) << "on from the start";
    for (const quint32 mask : {~ErrorHandler::traceBit, ErrorHandler::traceBit}) {
        ErrorHandler::Instance().SetMask(mask);
        EXPECT_FALSE(Note().LoadXml(QString("/no/such/file")));
    }
    _Q_Trace(QString::fromUtf8("50 %s \u00b5V"), "frequencystore/filehandling.cpp", 65535);
    ErrorHandler::Instance().SetMask(~quint32(0));
    qInstallMessageHandler(previous);

    ASSERT_EQ(traces.size(), 2);
    const QRegularExpression refused("^velmara\\|base/tallyxml\\.cpp\\|[1-9]\\d*\\|/no/such/file: ");
    EXPECT_TRUE(traces[0].contains(refused)) << qPrintable(traces[0]);
    EXPECT_EQ(traces[1], QString::fromUtf8("velmara|frequencystore/filehandling.cpp|65535|50 %s \u00b5V"));
}
