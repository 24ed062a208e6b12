/// Saving, by every way there is to a file: at any moment the path holds the old content or the new one.

#include "base/savefile.h"
#include "exchangefixture.h"
#include "frequencystore/paths.h"

#include <QDir>
#include <QProcess>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

/// What the system refuses.
bool isSyncFailing = false, isMountPoint = false, areNamesNeeded = false;
int reserveError = 0;

template <class... Argument> int refusedOr(bool isRefused, int error, long call, Argument... arguments)
{
    if (!isRefused)
        return int(syscall(call, arguments...));
    errno = error;
    return -1;
}

} // namespace

/// The disk may tell only now that it is full.
extern "C" Q_DECL_EXPORT int fdatasync(int file) { return refusedOr(isSyncFailing, ENOSPC, SYS_fdatasync, file); }

/// What asks the disk for room.
extern "C" Q_DECL_EXPORT int posix_fallocate(int file, off_t from, off_t size)
{
    return refusedOr(reserveError != 0, reserveError, SYS_fallocate, file, 0, from, size) == 0 ? 0 : errno;
}

/// A file that is mounted where it is, as containers have them, cannot be replaced.
extern "C" Q_DECL_EXPORT int rename(const char* from, const char* to) noexcept
{
    return refusedOr(isMountPoint, EBUSY, SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
}

/// By this a save finds out whether a file can do without a name.
extern "C" Q_DECL_EXPORT int access(const char* path, int mode) noexcept
{
    return refusedOr(areNamesNeeded, ENOENT, SYS_faccessat, AT_FDCWD, path, mode);
}

namespace {

/// No file may grow beyond this size while it lives, in this process and its children.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_previous);
        const rlimit limit{bytes, m_previous.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_previous{};
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

/// Lays down what only root may do, and gives a folder other permissions, while it lives.
class Unprivileged
{
public:
    Unprivileged(const QString& folder, mode_t mode) : m_folder(QFile::encodeName(folder))
    {
        EXPECT_EQ(chmod(m_folder, mode), 0);
        EXPECT_TRUE(geteuid() != 0 || seteuid(nobody) == 0);
    }
    ~Unprivileged()
    {
        EXPECT_EQ(seteuid(getuid()), 0);
        EXPECT_EQ(chmod(m_folder, 0755), 0);
    }

private:
    static constexpr uid_t nobody = 65534;
    const QByteArray m_folder;
};

/// Entries enough for a file of some size in each form.
FrequencyStoreList sampleList(int entries = 100)
{
    FrequencyStoreEntry entry;
    entry.SetType("entry");
    entry.GetFFM_Settings().GetFrequency().SetValue(1e8);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(8300);
    FrequencyStoreList list;
    list.SetFrequencyStoreEntry(QVector<FrequencyStoreEntry>(entries, entry));
    return list;
}

bool exportList(bool csv, const QString& path)
{
    FrequencyStoreList list = sampleList();
    return FileHandling().ExportFrequencyStoreList(csv, path, list, ListType::Suppress);
}

bool exportResults(bool csv, const QString& path)
{
    DetectionResult result;
    for (const auto& [place, text] : {std::pair("ID", "1"),
                                      {"Type", "a"},
                                      {"StartTime", "2024-02-29T12:00:00,000Z"},
                                      {"Frequency", "100000000"},
                                      {"Bandwidth", "8300"}})
        SetTextAt(result, place, text);
    DetectionResultList results;
    for (const auto& [place, text] : {std::pair("ID", "1"), {"Type", "a"}, {"Comment", "c"}, {"Usage", "Known"}})
        SetTextAt(results, place, text);
    results.SetDetectionResult(QVector<DetectionResult>(100, result));
    return FileHandling().ExportFrequencyStoreList(csv, path, results);
}

/// A list for the tool to read.
const QString& listFile()
{
    static const QTemporaryDir folder;
    static const QString file = folder.filePath("list.xml");
    static const bool isSaved = sampleList().SaveXml(file);
    EXPECT_TRUE(isSaved);
    return file;
}

/// Converts a list by the tool, whose message must name the file that it cannot write.
bool convert(const QString& to)
{
    QProcess tool;
    tool.start(VELMARA_TOOL, {"convert", listFile(), to, "--type", "Suppress"});
    EXPECT_TRUE(tool.waitForFinished());
    const bool isConverted = tool.exitCode() == 0;
    EXPECT_TRUE(isConverted || QString(tool.readAllStandardError()).contains(to));
    return isConverted;
}

/// Saves as the tool saves binary forms.
bool saveBytes(const QString& path)
{
    QString reason;
    const bool isSaved
        = SaveFile(path, sampleList().GetBinaryRepresentationAsQByteArray(), reason) == SaveResult::Saved;
    EXPECT_NE(reason.isEmpty(), !isSaved);
    return isSaved;
}

struct Writer
{
    const char* name;
    const char* file;
    std::function<bool(const QString&)> save;
    bool isTracing = true;
};

void PrintTo(const Writer& writer, std::ostream* out) { *out << writer.name; }

const Writer writers[] = {
    {"SaveXml", "list", [](const QString& path) { return sampleList().SaveXml(path); }},
    {"SaveFile", "list", saveBytes, false},
    {"ExportXml", "list", [](const QString& path) { return exportList(false, path); }},
    {"ExportCsv", "list", [](const QString& path) { return exportList(true, path); }},
    {"ExportResultsAsXml", "list", [](const QString& path) { return exportResults(false, path); }},
    {"ExportResultsAsCsv", "list", [](const QString& path) { return exportResults(true, path); }},
};

const Writer tools[] = {
    {"ToolToXml", "list.xml", convert, false},
    {"ToolToTagged", "list.tagged", convert, false},
    {"ToolToPacked", "list.packed", convert, false},
    {"ToolToCsv", "list.csv", convert, false},
};

} // namespace

class Saving : public ExchangeTest, public testing::WithParamInterface<Writer>
{
protected:
    Saving() { listFile(); }

    QString target() const { return path(GetParam().file); }
    bool save(const QString& to) const { return GetParam().save(to); }

    /// What a save writes.
    QByteArray whole() const
    {
        EXPECT_TRUE(save(path(QString("whole-") + GetParam().file)));
        return read(QString("whole-") + GetParam().file);
    }
    QByteArray content() const { return read(GetParam().file); }
    QStringList files() const { return QDir(path("")).entryList(QDir::Files | QDir::Hidden); }
    void expectRefused(const QString& to, const QString& reason = {}) const
    {
        traces().clear();
        EXPECT_FALSE(save(to)) << qPrintable(to);
        const QString trace = traces().join('|');
        EXPECT_EQ(trace.contains(to) && trace.contains(reason), GetParam().isTracing) << qPrintable(trace);
    }
    static struct stat stateOf(const QString& file)
    {
        struct stat state
        {};
        EXPECT_EQ(lstat(QFile::encodeName(file), &state), 0);
        return state;
    }
    static void link(const QByteArray& to, const QString& name) { ASSERT_EQ(symlink(to, QFile::encodeName(name)), 0); }
};

/// What takes a hold on the process that saves.
class SavingHere : public Saving
{};

const auto nameOf = [](const testing::TestParamInfo<Writer>& each) { return std::string(each.param.name); };
INSTANTIATE_TEST_SUITE_P(By, Saving, testing::ValuesIn(writers), nameOf);
INSTANTIATE_TEST_SUITE_P(With, Saving, testing::ValuesIn(tools), nameOf);
INSTANTIATE_TEST_SUITE_P(By, SavingHere, testing::ValuesIn(writers), nameOf);

TEST_P(Saving, AFullDiskLeavesTheFileAsItWas)
{
    write(GetParam().file, "precious");
    for (const rlim_t room : {0, 1, 1000}) {
        const FileSizeLimit limit(room);
        expectRefused(target());
        expectRefused(path("new-" + QString(GetParam().file)));
    }
    EXPECT_EQ(content(), "precious");
    EXPECT_EQ(files(), QStringList{GetParam().file}) << "no remains";
}

TEST_P(SavingHere, ADiskThatTellsOnlyLaterThatItIsFullLeavesTheFileAsItWas)
{
    write(GetParam().file, "precious");
    isSyncFailing = true;
    for (const bool areNamed : {false, true}) {
        areNamesNeeded = areNamed;
        expectRefused(target(), "No space left on device");
    }
    isSyncFailing = areNamesNeeded = false;
    EXPECT_EQ(content(), "precious");
    EXPECT_EQ(files(), QStringList{GetParam().file}) << "no remains";
}

TEST_P(SavingHere, AFileMayNeedANameWhileItIsMade)
{
    const QByteArray expected = whole();
    areNamesNeeded = true;
    EXPECT_TRUE(save(target()));
    areNamesNeeded = false;
    EXPECT_EQ(content(), expected);
    EXPECT_EQ(files().size(), 2) << "no remains";
    const QString longName = path(QString(200, 'x') + GetParam().file);
    EXPECT_TRUE(save(longName));
    EXPECT_TRUE(save(longName));
}

TEST_P(SavingHere, AFileThatCannotBeReplacedIsWrittenInPlace)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "root alone has rights to lay down";
    const QByteArray expected = whole();
    constexpr std::tuple<bool, mode_t, const char*> hindrances[] = {
        {false, 0555, "No file can be made in"}, {false, 01777, "It cannot be replaced"}, {true, 0777, "It cannot be"}};
    for (const auto& [isMounted, mode, hindrance] : hindrances) {
        for (const QByteArray& old : {QByteArray("old"), QByteArray(1 << 20, 'x')}) {
            SCOPED_TRACE(hindrance);
            write(GetParam().file, old);
            const ino_t before = stateOf(target()).st_ino;
            chmod(QFile::encodeName(target()), 0666);
            isMountPoint = isMounted;
            {
                const Unprivileged user(path(""), mode);
                reserveError = ENOSPC;
                expectRefused(target(), QString("No space left on device (") + hindrance);
                EXPECT_EQ(content(), old);
                reserveError = old == "old" ? EOPNOTSUPP : 0; // which not every file system can
                EXPECT_TRUE(save(target()));
                reserveError = 0;
            }
            isMountPoint = false;
            EXPECT_EQ(content(), expected);
            EXPECT_EQ(stateOf(target()).st_ino, before);
        }
    }
    EXPECT_EQ(files().size(), 2) << "no remains";
}

TEST_P(Saving, WhereNoFileCanBeNoneIsMade)
{
    expectRefused(path("no/such/folder/") + GetParam().file);
    expectRefused("/proc/" + QString(GetParam().file));
    ASSERT_TRUE(QDir().mkdir(path("directory.") + GetParam().file));
    expectRefused(path("directory.") + GetParam().file);
}

TEST_P(SavingHere, AFolderThatMayNotBeWrittenLeavesTheFileAsItWas)
{
    write(GetParam().file, "precious");
    {
        const Unprivileged user(path(""), 0555);
        expectRefused(target());
    }
    EXPECT_EQ(content(), "precious");
}

TEST_P(Saving, LinksStayAndTheirTargetIsReplaced)
{
    const QByteArray expected = whole();
    QDir(path("")).mkpath("real/inner");
    link("real/inner", path("folder"));
    link(QByteArray("../behind-") + GetParam().file, path("real/inner/") + GetParam().file);
    link(QByteArray("folder/") + GetParam().file, target());
    const QString behind = "real/behind-" + QString(GetParam().file);
    const QByteArray other = QFile::encodeName(path("real/other"));
    for (const bool isThere : {false, true}) {
        if (isThere) {
            write(behind, "old");
            ASSERT_EQ(::link(QFile::encodeName(path(behind)), other), 0);
        }
        EXPECT_TRUE(save(target()));
        EXPECT_EQ(read(behind), expected);
        EXPECT_TRUE(S_ISREG(stateOf(path(behind)).st_mode));
    }
    EXPECT_EQ(read("real/other"), "old") << "another file takes the place of the old one";
    for (const QString& each : {target(), path("real/inner/") + GetParam().file, path("folder")})
        EXPECT_TRUE(S_ISLNK(stateOf(each).st_mode)) << qPrintable(each);

    const QString loop = "loop-" + QString(GetParam().file);
    link(QFile::encodeName(loop), path(loop));
    expectRefused(path(loop));
    EXPECT_TRUE(S_ISLNK(stateOf(path(loop)).st_mode));
}

TEST_P(Saving, WhatIsNoRegularFileIsWrittenAsItStands)
{
    const QByteArray expected = whole();
    ASSERT_EQ(mkfifo(QFile::encodeName(target()), 0600), 0);
    const int end = open(QFile::encodeName(target()), O_RDWR | O_NONBLOCK);
    EXPECT_TRUE(save(target()));
    QByteArray piped(expected.size() + 1, '\0');
    piped.truncate(int(::read(end, piped.data(), size_t(piped.size()))));
    EXPECT_EQ(piped, expected);
    close(end);
    EXPECT_TRUE(S_ISFIFO(stateOf(target()).st_mode));

    const QString full = path("full-") + GetParam().file;
    link("/dev/full", full);
    expectRefused(full);
    EXPECT_TRUE(S_ISCHR(stateOf("/dev/full").st_mode));
}

TEST_P(SavingHere, AnOpenFileIsWrittenAsItStands)
{
    const QByteArray expected = whole();
    QFile unnamed(path("unnamed"));
    ASSERT_TRUE(unnamed.open(QIODevice::ReadWrite) && unnamed.remove());
    ASSERT_TRUE(unnamed.open(QIODevice::ReadWrite));
    const int file = unnamed.handle();
    ASSERT_EQ(unlink(QFile::encodeName(path("unnamed"))), 0);
    EXPECT_TRUE(save(QString("/dev/fd/%1").arg(file)));
    EXPECT_EQ(unnamed.readAll(), expected);
    EXPECT_EQ(files().filter("unnamed"), QStringList());
}

TEST_P(Saving, PermissionsAndOwnerStay)
{
    write(GetParam().file, "old");
    const bool isRoot = geteuid() == 0; // who alone may give files away
    const uid_t owner = isRoot ? 12 : geteuid();
    const gid_t group = isRoot ? 34 : getegid();
    for (const mode_t mode : {0600, 0640, 0664, 0755, 0440, 0200}) {
        if (!isRoot && !(mode & 0200))
            continue; // others are refused what is not to be written
        ASSERT_EQ(chown(QFile::encodeName(target()), owner, group), 0);
        ASSERT_EQ(chmod(QFile::encodeName(target()), mode), 0);
        EXPECT_TRUE(save(target()));
        const struct stat state = stateOf(target());
        EXPECT_EQ(state.st_mode & 07777, mode);
        EXPECT_EQ(state.st_uid, owner);
        EXPECT_EQ(state.st_gid, group);
        EXPECT_GT(state.st_size, 3);
    }
}

TEST_P(SavingHere, RightsOfAGroupThatCannotBeKeptAreDropped)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "root alone has rights to lay down";
    for (const gid_t group : {34u, getegid()}) { // a foreign one, and one of the process
        const bool isKept = group == getegid();
        write(GetParam().file, "old");
        ASSERT_EQ(chown(QFile::encodeName(target()), 12, group), 0);
        chmod(QFile::encodeName(target()), 0666);
        {
            const Unprivileged user(path(""), 0777);
            EXPECT_TRUE(save(target()));
        }
        const struct stat state = stateOf(target());
        EXPECT_NE(state.st_uid, 12u);
        EXPECT_EQ(state.st_gid == group, isKept);
        EXPECT_EQ(state.st_mode & 07777, isKept ? 0666u : 0606u);
        EXPECT_GT(state.st_size, 3);
    }
}

namespace {

/// Saves one list, then the other, until it is killed.
[[noreturn]] void saveForEver(const QString& file, const QByteArray& first, const QByteArray& second)
{
    QString reason;
    for (;;) {
        SaveFile(file, first, reason);
        SaveFile(file, second, reason);
    }
}

} // namespace

class Killed : public ExchangeTest
{};

TEST_F(Killed, AtAnyMomentThePathHoldsTheOldOrTheNewFile)
{
    QByteArray documents[2];
    for (int i : {0, 1}) {
        ASSERT_TRUE(sampleList(200 + 100 * i).SaveXml(path("list.xml")));
        documents[i] = read("list.xml");
    }
    const auto isWhole = [&] {
        const QByteArray content = read("list.xml");
        return content == documents[0] || content == documents[1];
    };
    int found[2] = {0, 0};
    std::mt19937 random(1);
    for (int kill = 0; kill < 100 || found[0] == 0 || found[1] == 0; ++kill) {
        const pid_t saver = fork();
        if (saver == 0)
            saveForEver(path("list.xml"), documents[kill % 2], documents[1 - kill % 2]);
        usleep(random() % 4000);
        ASSERT_TRUE(isWhole()) << "while it was saved";
        usleep(random() % 4000);
        ::kill(saver, SIGKILL);
        waitpid(saver, nullptr, 0);
        ASSERT_TRUE(isWhole()) << "after the end";
        ++found[read("list.xml") == documents[1]];
    }

    // A save that was killed may leave a file behind, whose name does not take it for the list.
    for (const QString& file : QDir(path("")).entryList(QDir::Files | QDir::Hidden)) {
        EXPECT_TRUE(file == "list.xml" || file.startsWith("list.xml.")) << qPrintable(file);
    }
    EXPECT_TRUE(sampleList().SaveXml(path("list.xml")));
}

using SavingNewFiles = ExchangeTest;

TEST_F(SavingNewFiles, NamesTheFolderThatRefusesThem)
{
    QString reason;
    {
        const Unprivileged user(path(""), 0555);
        EXPECT_EQ(SaveFile(path("new"), "content", reason), SaveResult::NotOpened);
    }
    EXPECT_EQ(reason, "No file can be made in '" + QDir(path("")).path() + "': Permission denied");
}

using SavingLongDocuments = ExchangeTest;

TEST_F(SavingLongDocuments, WritesWhatOneWrittenAtOnceHolds)
{
    const FrequencyStoreList list = sampleList(6000);
    QByteArray document("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    ASSERT_TRUE(list.ITallyObject::AppendXml(document, true));
    ASSERT_GT(document.size(), 1 << 20);
    ASSERT_TRUE(list.SaveXml(path("list.xml")));
    EXPECT_EQ(read("list.xml"), document + '\n');
    QByteArray drained, rest;
    EXPECT_TRUE(list.AppendXml(rest, true, [&](const char* bytes, int size) { drained.append(bytes, size); }));
    EXPECT_LT(rest.size(), 1 << 19);
    EXPECT_EQ(read("list.xml").mid(38), drained + rest + '\n');
}

TEST_F(SavingLongDocuments, LeavesTheFileAsItWasIfTheEndCannotBeWritten)
{
    write("list.xml", "precious");
    FrequencyStoreList list = sampleList(6000);
    list.GetFrequencyStoreEntry().last().SetComment(QString(QChar(1)));
    EXPECT_FALSE(list.SaveXml(path("list.xml")));
    EXPECT_EQ(read("list.xml"), "precious");
    EXPECT_EQ(QDir(path("")).entryList(QDir::Files | QDir::Hidden), QStringList{"list.xml"}) << "no remains";
}
