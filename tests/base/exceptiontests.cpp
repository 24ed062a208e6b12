#include "base/errorhandler.h"
#include "note.h"

#include <gtest/gtest.h>

using namespace TALLYFORM;

TEST(ExceptionTest, TheMessageIsWhatWasGivenAndOutlivesIt)
{
    const auto make = [] { return OutOfRangeException(QStringLiteral("5 \u00b5V")); };
    const OutOfRangeException failure = make();
    const OutOfRangeException copy = failure;
    EXPECT_STREQ(copy.what(), "5 \xc2\xb5V");
    EXPECT_EQ(copy.GetMessage(), QStringLiteral("5 \u00b5V"));
    EXPECT_STREQ(TallyException(QString()).what(), "");
}

TEST(ExceptionTest, DetailNamesClassMessageAndOrigin)
{
    InvalidXmlException failure(QStringLiteral("Unknown Tag"));
    EXPECT_EQ(failure.GetDetail(), QStringLiteral("InvalidXmlException: Unknown Tag"));
    failure.GetFault().place = {.source = QStringLiteral("list.xml"), .line = 12, .column = 5};
    const TallyFormException& root = failure;
    EXPECT_EQ(root.GetDetail(), QStringLiteral("InvalidXmlException: Unknown Tag (list.xml, line 12, column 5)"));
    EXPECT_EQ(root.GetMessage(), QStringLiteral("Unknown Tag"));
}

TEST(ExceptionTest, AllAreCaughtAsTallyExceptionAndAsStandardException)
{
    EXPECT_THROW(throw OutOfRangeException(QString()), TallyException);
    EXPECT_THROW(throw BinaryParsingException(QString()), TallyException);
    EXPECT_THROW(throw InvalidXmlException(QString()), TallyException);
    EXPECT_THROW(throw IncompleteDefinitionException(QString()), TallyException);
    EXPECT_THROW(throw TallyException(QString()), std::exception);
}

namespace {

/// Keeps the last trace while it lives, and gives mask and message handler back.
class TraceTest : public testing::Test
{
protected:
    void TearDown() override
    {
        ErrorHandler::Instance().SetMask(~quint32(0));
        qInstallMessageHandler(m_previous);
    }

    static inline QStringList s_traces;
    QtMessageHandler m_previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext& at, const QString& text) {
            s_traces = QStringList{QLatin1String(at.category), QLatin1String(at.file), QString::number(at.line), text};
        });
};

} // namespace

TEST_F(TraceTest, CarriesMessageFileAndLine)
{
    s_traces.clear();
    _Q_Trace(QStringLiteral("50 %s \u00b5V"), QStringLiteral("frequencystore/filehandling.cpp"), 65535);
    EXPECT_EQ(s_traces.join(QLatin1Char('|')),
              QStringLiteral("velmara|frequencystore/filehandling.cpp|65535|50 %s \u00b5V"));
}

TEST_F(TraceTest, FailuresThatGiveFalseAreTracedUnderTheMask)
{
    Note note;
    EXPECT_TRUE(ErrorHandler::Instance() & 32) << "on from the start";

    ErrorHandler::Instance().SetMask(~ErrorHandler::traceBit);
    s_traces.clear();
    EXPECT_FALSE(note.LoadXml(QStringLiteral("/no/such/file")));
    EXPECT_TRUE(s_traces.isEmpty());

    ErrorHandler::Instance().SetMask(ErrorHandler::traceBit);
    EXPECT_FALSE(note.LoadXml(QStringLiteral("/no/such/file")));
    ASSERT_EQ(s_traces.size(), 4);
    EXPECT_EQ(s_traces[1], QStringLiteral("base/xmldocument.cpp"));
    EXPECT_TRUE(s_traces[3].startsWith(QLatin1String("/no/such/file: "))) << s_traces[3].toStdString();
}
