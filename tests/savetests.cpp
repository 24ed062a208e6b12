/// Saving: at any moment the path holds the old content or the new one.

#include "base/savefile.h"
#include "exchangefixture.h"
#include "recordvalues.h"

#include <QDebug>
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

/// Entries enough for a file of some size in each form.
FrequencyStoreList sampleList(int entries = 100)
{
    const char* const entry = "Type='a' FFM_Settings/Frequency='1' FFM_Settings/IFBandwidth='2'";
    FrequencyStoreList list;
    list.SetFrequencyStoreEntry(QVector(entries, recordsIn<FrequencyStoreEntry>(entry)[0]));
    return list;
}

bool exportList(bool isCsv, const QString& path)
{
    FrequencyStoreList list = sampleList();
    return FileHandling().ExportFrequencyStoreList(isCsv, path, list, ListType::Suppress);
}

bool exportResults(bool isCsv, const QString& path)
{
    DetectionResultList results;
    EXPECT_TRUE(results.LoadXml(VELMARA_EXAMPLES "/detectionresults.xml"));
    return FileHandling().ExportFrequencyStoreList(isCsv, path, results);
}

/// Converts a list by the tool, and passes on what that tells.
bool convert(const QString& to)
{
    QProcess tool;
    tool.start(VELMARA_TOOL, {"convert", VELMARA_EXAMPLES "/memoryscan.csv", to, "--type", "MemoryScan"});
    EXPECT_TRUE(tool.waitForFinished());
    qWarning().noquote() << tool.readAllStandardError();
    return tool.exitCode() == 0;
}

/// Every way to a file, and the name of one.
const std::pair<const char*, std::function<bool(const QString&)>> writers[] = {
    {"saved.xml", [](const QString& path) { return sampleList().SaveXml(path); }},
    {"list.xml", [](const QString& path) { return exportList(false, path); }},
    {"list.csv", [](const QString& path) { return exportList(true, path); }},
    {"results.xml", [](const QString& path) { return exportResults(false, path); }},
    {"results.csv", [](const QString& path) { return exportResults(true, path); }},
    {"converted.xml", convert},
    {"converted.csv", convert},
    {"converted.tagged", convert},
    {"converted.packed", convert},
};

/// No file may grow beyond this size, in this process and its children.
void limitFileSizes(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = qMin(bytes, limit.rlim_max);
    setrlimit(RLIMIT_FSIZE, &limit);
}

struct stat stateOf(const QString& file)
{
    struct stat state
    {};
    EXPECT_EQ(lstat(QFile::encodeName(file), &state), 0);
    return state;
}

mode_t kindOf(const QString& file) { return stateOf(file).st_mode & S_IFMT; }

} // namespace

class Saving : public ExchangeTest
{
protected:
    /// What a save tells; null if it is done.
    static QString save(const QString& file, const QByteArray& content = "content")
    {
        QString reason;
        const bool isSaved = SaveFile(file, content, reason) == SaveResult::Saved;
        EXPECT_EQ(isSaved, reason.isNull()) << reason.toStdString();
        return reason;
    }
    QStringList files() const { return QDir(path("")).entryList(QDir::Files | QDir::Hidden); }
    void link(const char* to, const char* name) const { EXPECT_EQ(symlink(to, QFile::encodeName(path(name))), 0); }
    void chmod(const QString& file, mode_t mode) const { EXPECT_EQ(::chmod(QFile::encodeName(file), mode), 0); }
    void chown(const QString& file, uid_t user, gid_t group) const
    {
        EXPECT_EQ(::chown(QFile::encodeName(file), user, group), 0);
    }
    /// Lays down what only root may do, and gives the folder other permissions, during an action.
    template <class Action> void unprivileged(mode_t mode, Action action) const
    {
        constexpr uid_t nobody = 65534;
        chmod(path(""), mode);
        EXPECT_TRUE(geteuid() != 0 || seteuid(nobody) == 0);
        action();
        EXPECT_EQ(seteuid(getuid()), 0);
        chmod(path(""), 0755);
    }
};

TEST_F(Saving, IsAllOrNothingByEveryWay)
{
    for (const auto& [name, save] : writers) {
        SCOPED_TRACE(name);
        const auto expectRefused = [&, &save = save](const QString& file) {
            traces().clear();
            EXPECT_FALSE(save(file)) << qPrintable(file);
            EXPECT_TRUE(traces().join('|').contains(file)) << qPrintable(traces().join('|'));
        };
        EXPECT_TRUE(save(path(name)));
        const QByteArray whole = read(name);
        write(name, "precious");
        for (const rlim_t room : {0, 1, 500}) {
            limitFileSizes(room);
            expectRefused(path(name));
            expectRefused(path("new-") + name);
            limitFileSizes(RLIM_INFINITY);
        }
        expectRefused(path("no/such/folder/") + name);
        EXPECT_EQ(read(name), "precious");
        EXPECT_EQ(files(), QStringList{name}) << "no remains";

        ASSERT_TRUE(QFile::rename(path(name), path("precious")));
        ASSERT_EQ(::link(QFile::encodeName(path("precious")), QFile::encodeName(path(name))), 0);
        EXPECT_TRUE(save(path(name)));
        EXPECT_EQ(read(name), whole);
        EXPECT_EQ(read("precious"), "precious") << "not written over";
        EXPECT_TRUE(QFile::remove(path(name)) && QFile::remove(path("precious")));
    }
}

TEST_F(Saving, MayFailAtTheEndOrNeedANameUntilThen)
{
    for (const bool areNamed : {false, true}) {
        areNamesNeeded = areNamed;
        isSyncFailing = true;
        write("file", "precious");
        EXPECT_EQ(save(path("file")), "Not all bytes could be written: No space left on device");
        EXPECT_EQ(read("file"), "precious");
        isSyncFailing = false;
        for (const QString& name : {QString("file"), QString(204, 'x'), QString(204, 'x')}) {
            EXPECT_EQ(save(path(name)), QString());
            EXPECT_EQ(read(name), "content");
        }
        EXPECT_EQ(files().size(), 2) << "no remains";
    }
    areNamesNeeded = false;
}

TEST_F(Saving, WritesInPlaceWhatCannotBeReplaced)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "root alone has rights to lay down";
    constexpr std::tuple<bool, mode_t, const char*> hindrances[] = {
        {false, 0555, "No file can be made in"}, {false, 01777, "It cannot be replaced"}, {true, 0777, "It cannot be"}};
    const QByteArray content(1 << 17, 'c');
    for (const auto& [isMounted, mode, hindrance] : hindrances) {
        for (const QByteArray& old : {QByteArray("old"), QByteArray(1 << 20, 'x')}) {
            SCOPED_TRACE(hindrance);
            write("file", old);
            const ino_t before = stateOf(path("file")).st_ino;
            chmod(path("file"), 0666);
            isMountPoint = isMounted;
            unprivileged(mode, [&, hindrance = hindrance] {
                reserveError = ENOSPC;
                const QString reason = save(path("file"), content);
                EXPECT_TRUE(reason.contains(QString("No space left on device (") + hindrance)) << qPrintable(reason);
                EXPECT_TRUE(read("file") == old);
                reserveError = old == "old" ? EOPNOTSUPP : 0; // which not every file system can
                EXPECT_EQ(save(path("file"), content), QString());
                reserveError = 0;
            });
            isMountPoint = false;
            EXPECT_TRUE(read("file") == content);
            EXPECT_EQ(stateOf(path("file")).st_ino, before);
        }
    }
    EXPECT_EQ(files(), QStringList{"file"}) << "no remains";
}

TEST_F(Saving, SaysWhyNoFileCanBeMade)
{
    const QString folder = path(""), made = "No file can be made in '";
    write("file", "precious");
    chmod(path("file"), 0444);
    EXPECT_EQ(save(folder + "/no/such/file"), made + folder + "/no/such': No such file or directory");
    EXPECT_EQ(save("/proc/file"), made + "/proc': No such file or directory");
    EXPECT_EQ(save(folder), "Is a directory");
    unprivileged(0555, [&] {
        EXPECT_EQ(save(folder + "/new"), made + folder + "': Permission denied");
        EXPECT_EQ(save(path("file")), "Permission denied");
    });
    EXPECT_EQ(read("file"), "precious");
    EXPECT_EQ(files(), QStringList{"file"});
}

TEST_F(Saving, LeavesLinksAndReplacesTheirTarget)
{
    QDir(path("")).mkpath("real/inner");
    link("real/inner", "folder");
    link("../behind", "real/inner/link");
    link("folder/link", "file");
    EXPECT_EQ(save(path("file"), "first"), QString());
    ASSERT_EQ(::link(QFile::encodeName(path("real/behind")), QFile::encodeName(path("real/first"))), 0);
    EXPECT_EQ(save(path("file"), "second"), QString());
    EXPECT_EQ(read("real/behind"), "second");
    EXPECT_EQ(read("real/first"), "first") << "another file takes the place of the old one";
    EXPECT_EQ(kindOf(path("real/behind")), mode_t(S_IFREG));
    link("loop", "loop");
    EXPECT_EQ(save(path("loop")), "Too many levels of symbolic links");
    for (const char* const name : {"file", "real/inner/link", "folder", "loop"})
        EXPECT_EQ(kindOf(path(name)), mode_t(S_IFLNK)) << name;
}

TEST_F(Saving, WritesWhatIsNoRegularFileAsItStands)
{
    const QByteArray content(1 << 10, 'c');
    ASSERT_EQ(mkfifo(QFile::encodeName(path("fifo")), 0600), 0);
    QFile fifo(path("fifo"));
    ASSERT_TRUE(fifo.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    EXPECT_EQ(save(path("fifo"), content), QString());
    EXPECT_EQ(fifo.read(content.size()), content);
    EXPECT_EQ(kindOf(path("fifo")), mode_t(S_IFIFO));

    link("/dev/full", "full");
    EXPECT_EQ(save(path("full")), "Not all bytes could be written: No space left on device");
    EXPECT_EQ(kindOf("/dev/full"), mode_t(S_IFCHR));

    QFile unnamed(path("unnamed"));
    ASSERT_TRUE(unnamed.open(QIODevice::ReadWrite));
    ASSERT_EQ(unlink(QFile::encodeName(path("unnamed"))), 0);
    EXPECT_EQ(save(QString("/dev/fd/%1").arg(unnamed.handle()), content), QString());
    EXPECT_EQ(unnamed.readAll(), content);
    EXPECT_EQ(files(), QStringList{"full"});
}

TEST_F(Saving, KeepsPermissionsAndOwner)
{
    const bool isRoot = geteuid() == 0; // who alone may give files away, and write what is not to be written
    const uid_t owner = isRoot ? 12 : geteuid();
    const gid_t group = isRoot ? 34 : getegid();
    for (const mode_t mode : {0600, 0640, 0664, 0755, 0440, 0200}) {
        if (!isRoot && !(mode & 0200))
            continue;
        write("file", "old");
        chown(path("file"), owner, group);
        chmod(path("file"), mode);
        EXPECT_EQ(save(path("file")), QString());
        const struct stat state = stateOf(path("file"));
        EXPECT_EQ(std::tuple(state.st_mode & 07777, state.st_uid, state.st_gid), std::tuple(mode, owner, group));
        EXPECT_EQ(state.st_size, 7);
    }
}

TEST_F(Saving, DropsRightsOfAGroupThatCannotBeKept)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "root alone has rights to lay down";
    for (const gid_t group : {34u, getegid()}) { // a foreign one, and one of the process
        const bool isKept = group == getegid();
        write("file", "old");
        chown(path("file"), 12, group);
        chmod(path("file"), 0666);
        unprivileged(0777, [&] { EXPECT_EQ(save(path("file")), QString()); });
        const struct stat state = stateOf(path("file"));
        EXPECT_NE(state.st_uid, 12u);
        EXPECT_EQ(state.st_gid == group, isKept);
        EXPECT_EQ(state.st_mode & 07777, isKept ? 0666u : 0606u);
        EXPECT_EQ(read("file"), "content");
    }
}

TEST_F(Saving, MayBeKilledAtAnyMoment)
{
    const QByteArray documents[] = {QByteArray(60000, 'a'), QByteArray(90000, 'b')};
    const auto isWhole = [&] {
        const QByteArray content = read("file");
        return content == documents[0] || content == documents[1];
    };
    save(path("file"), documents[0]);
    int found[2] = {0, 0};
    std::mt19937 random(1);
    for (int kill = 0; kill < 100 || found[0] == 0 || found[1] == 0; ++kill) {
        const pid_t saver = fork();
        if (saver == 0)
            for (int i = kill;; ++i)
                save(path("file"), documents[i % 2]);
        usleep(random() % 4000);
        const bool wasWhole = isWhole();
        usleep(random() % 4000);
        ::kill(saver, SIGKILL);
        waitpid(saver, nullptr, 0);
        ASSERT_TRUE(wasWhole) << "while it was saved";
        ASSERT_TRUE(isWhole()) << "after the end";
        ++found[read("file") == documents[1]];
    }
    for (const QString& file : files()) // a save that was killed may leave one behind, by a name of its own
        EXPECT_TRUE(file == "file" || file.startsWith("file.")) << qPrintable(file);
    EXPECT_EQ(save(path("file")), QString());
}

TEST_F(Saving, WritesALongDocumentInPortionsAsOneWrittenAtOnce)
{
    const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    FrequencyStoreList list = sampleList(6000);
    QByteArray drained = head, rest, atOnce = head;
    ASSERT_TRUE(list.ITallyObject::AppendXml(atOnce, true));
    EXPECT_TRUE(list.AppendXml(rest, true, [&](const char* bytes, int size) { drained.append(bytes, size); }));
    EXPECT_GT(drained.size(), 1 << 20);
    EXPECT_LT(rest.size(), 1 << 19);
    EXPECT_TRUE(drained + rest == atOnce);
    ASSERT_TRUE(list.SaveXml(path("list.xml")));
    const QByteArray saved = read("list.xml");
    EXPECT_TRUE(saved == atOnce + '\n');

    list.GetFrequencyStoreEntry().last().SetComment(QString(QChar(1))); // so that the end cannot be written
    EXPECT_FALSE(list.SaveXml(path("list.xml")));
    EXPECT_TRUE(read("list.xml") == saved);
    EXPECT_EQ(files(), QStringList{"list.xml"}) << "no remains";
}
