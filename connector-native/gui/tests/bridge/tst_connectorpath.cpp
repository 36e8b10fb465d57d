#include "bridge/connectorpath.h"
#include "support/testprogram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray connectorName = "brindlecove-connector";

enum class Mode { Executable, Plain };

void makeDirectory(const QByteArray &path)
{
    for (qsizetype end = path.indexOf('/', 1); end > 0; end = path.indexOf('/', end + 1)) {
        mkdir(path.first(end).constData(), 0700);
    }
    QVERIFY(mkdir(path.constData(), 0700) == 0 || errno == EEXIST);
}

void writeFile(const QByteArray &path, Mode mode)
{
    makeDirectory(path.first(path.lastIndexOf('/')));
    const int file =
        open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, mode == Mode::Executable ? 0700 : 0600);
    QVERIFY(file >= 0);
    QCOMPARE(write(file, "#!/bin/sh\n", 10), 10);
    close(file);
}

void makeLink(const QByteArray &target, const QByteArray &path)
{
    QCOMPARE(symlink(target.constData(), path.constData()), 0);
}

} // namespace

class TestConnectorPath : public QObject
{
    Q_OBJECT

    [[nodiscard]] QByteArray at(const QByteArray &path) const { return m_root + '/' + path; }
    [[nodiscard]] ProgramPlace place() const
    {
        return {Packaging::Directory, at("real"), at("called/gui"), at("home")};
    }
    [[nodiscard]] QByteArray beside(const QByteArray &directory) const
    {
        return at(directory) + '/' + connectorName;
    }
    [[nodiscard]] QByteArray fallback() const
    {
        return at("home/.tidewell/workspace/brindlecove/connector-native/build/brindlecove-connector");
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QByteArray m_root;
    QString m_before;
    QByteArray m_home;

private slots:
    void init()
    {
        m_before = QDir::currentPath();
        m_home = qgetenv("HOME");
        m_directory = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/blank and ünïcode XXXXXX"_s);
        QVERIFY(m_directory->isValid());
        // The system's directory for temporary files may itself be a symbolic link.
        m_root = QFile::encodeName(QFileInfo(m_directory->path()).canonicalFilePath());
        makeDirectory(at("real"));
        makeDirectory(at("called"));
        QCOMPARE(chdir(m_root.constData()), 0);
    }

    void cleanup()
    {
        QVERIFY(QDir::setCurrent(m_before));
        // QTemporaryDir leaves behind what it cannot name.
        std::filesystem::remove_all(m_root.toStdString());
        QVERIFY(qputenv("HOME", m_home));
    }

    void argument0Names_data()
    {
        QTest::addColumn<QByteArray>("argument0");
        QTest::addColumn<QByteArray>("directory"); // below the current directory unless absolute

        QTest::newRow("absolute path") << "/opt/brindlecove/gui"_ba
                                       << "/opt/brindlecove"_ba;
        QTest::newRow("in the root directory") << "/gui"_ba
                                               << ""_ba;
        QTest::newRow("relative path") << "bin/gui"_ba
                                       << "bin"_ba;
        QTest::newRow("current directory") << "./gui"_ba << QByteArray();
        QTest::newRow("name without a slash") << "gui"_ba << QByteArray();
        QTest::newRow("nothing") << ""_ba << QByteArray();
        QTest::newRow("parent directory") << "../gui"_ba
                                          << ".."_ba;
        QTest::newRow("doubled slashes") << "bin//x//gui"_ba
                                         << "bin/x"_ba;
        QTest::newRow("blanks and Unicode") << "mein Ordner/ひ ü/g u i"_ba
                                            << "mein Ordner/ひ ü"_ba;
        QTest::newRow("colon at the start") << ":/gui"_ba
                                            << ":"_ba;
    }

    void argument0Names()
    {
        QFETCH(QByteArray, argument0);
        QFETCH(QByteArray, directory);
        ProgramPlace called = place();
        called.argument0 = argument0;
        const QByteArray base = argument0.startsWith('/') ? directory
            : directory.isEmpty()                         ? m_root
                                                          : at(directory);
        QCOMPARE(connectorCandidates(called).at(1), base + '/' + connectorName);
    }

    void parentOfALinkIsNotTheDirectoryOfTheLink()
    {
        makeDirectory(at("far/inner"));
        makeLink(at("far/inner"), at("link"));
        writeFile(beside("far"), Mode::Executable);
        ProgramPlace called = place();
        called.argument0 = "link/../gui";
        QCOMPARE(QFile::encodeName(QFileInfo(QFile::decodeName(connectorPath(called))).canonicalFilePath()),
                 beside("far"));
    }

    void linkedProgramIsLookedUpBesideTheLink()
    {
        writeFile(at("far/gui"), Mode::Executable);
        writeFile(beside("called"), Mode::Executable);
        makeLink(at("far/gui"), at("called/gui"));
        QCOMPARE(connectorPath(place()), beside("called"));
    }

    void programPlaceTellsBundles_data()
    {
        QTest::addColumn<QByteArray>("programDirectory");
        QTest::addColumn<bool>("bundle");
        QTest::addColumn<QByteArray>("directory");

        QTest::newRow("in a bundle") << "/Applications/X.app/Contents/MacOS"_ba << true
                                     << "/Applications/X.app"_ba;
        QTest::newRow("plain directory") << "/usr/lib/brindlecove"_ba << false << "/usr/lib/brindlecove"_ba;
        QTest::newRow("root directory") << "/"_ba << false << "/"_ba;
        QTest::newRow("no bundle's name") << "/x/Contents/MacOS"_ba << false << "/x/Contents/MacOS"_ba;
        QTest::newRow("elsewhere in a bundle")
            << "/X.app/Contents/Tools"_ba << false << "/X.app/Contents/Tools"_ba;
    }

    void programPlaceTellsBundles()
    {
        QFETCH(QByteArray, programDirectory);
        QFETCH(bool, bundle);
        QFETCH(QByteArray, directory);
        const ProgramPlace found = programPlace(programDirectory, "gui"_ba, "/home/user"_ba);
        QCOMPARE(found.packaging == Packaging::Bundle, bundle);
        QCOMPARE(found.directory, directory);
        QCOMPARE(found.argument0, "gui");
        QCOMPARE(found.home, "/home/user");
    }

    void bundleCandidateLiesInTheBundle()
    {
        ProgramPlace bundle = place();
        bundle.packaging = Packaging::Bundle;
        bundle.directory = at("X.app");
        writeFile(beside("X.app"), Mode::Executable);
        QCOMPARE(connectorPath(bundle), fallback());
        writeFile(beside("X.app/Contents/MacOS"), Mode::Executable);
        QCOMPARE(connectorPath(bundle), beside("X.app/Contents/MacOS"));
    }

    void firstCandidateWins()
    {
        writeFile(fallback(), Mode::Executable);
        QCOMPARE(connectorPath(place()), fallback());
        writeFile(beside("called"), Mode::Executable);
        QCOMPARE(connectorPath(place()), beside("called"));
        writeFile(beside("real"), Mode::Executable);
        QCOMPARE(connectorPath(place()), beside("real"));
    }

    void unusableCandidatesArePassedOver_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("directory") << u"directory"_s;
        QTest::newRow("file without the permission") << u"plain"_s;
        QTest::newRow("dangling link") << u"dangling"_s;
        QTest::newRow("link to a directory") << u"linked directory"_s;
    }

    void unusableCandidatesArePassedOver()
    {
        QFETCH(QString, kind);
        for (const QByteArray &path : {beside("real"), beside("called")}) {
            if (kind == u"directory"_s) {
                makeDirectory(path);
            } else if (kind == u"plain"_s) {
                writeFile(path, Mode::Plain);
            } else {
                makeLink(kind == u"dangling"_s ? at("nowhere") : m_root, path);
            }
        }
        QCOMPARE(connectorPath(place()), fallback());
    }

    void linkToAnExecutableCounts()
    {
        writeFile(at("far/tool"), Mode::Executable);
        makeLink(at("far/tool"), beside("real"));
        QCOMPARE(connectorPath(place()), beside("real"));
    }

    void fallbackIsNotTested()
    {
        QVERIFY(access(fallback().constData(), F_OK) != 0);
        QCOMPARE(connectorPath(place()), fallback());
    }

    void evaluatedAfreshAtEachCall()
    {
        const ProgramPlace unchanged = place();
        QCOMPARE(connectorPath(unchanged), fallback());
        writeFile(beside("real"), Mode::Executable);
        QCOMPARE(connectorPath(unchanged), beside("real"));
        QCOMPARE(unlink(beside("real").constData()), 0);
        QCOMPARE(connectorPath(unchanged), fallback());
    }

#ifdef __linux__ // Elsewhere no name is anything but UTF-8.
    // Only what is handed to the system without being decoded finds its way back to it.
    void foldersNeedNoUtf8()
    {
        const QByteArray odd = "\xff folder \xc3";
        ProgramPlace called = place();
        called.argument0 = odd + "/gui";
        called.directory = at("real" + odd);
        called.home = at("home" + odd);
        QCOMPARE(connectorPath(called), at("home" + odd) + fallback().sliced(at("home").size()));
        writeFile(beside(odd), Mode::Executable);
        QCOMPARE(connectorPath(called), beside(odd));
        writeFile(beside("real" + odd), Mode::Executable);
        QCOMPARE(connectorPath(called), beside("real" + odd));
    }

    void aCurrentDirectoryNeedsNoUtf8()
    {
        const QByteArray odd = at("\xff current");
        makeDirectory(odd);
        QCOMPARE(chdir(odd.constData()), 0);
        ProgramPlace called = place();
        called.argument0 = "gui";
        QCOMPARE(connectorCandidates(called).at(1), odd + '/' + connectorName);
    }

#endif

    void aDeletedCurrentDirectoryHoldsNothing()
    {
        const QByteArray gone = at("gone");
        makeDirectory(gone);
        QCOMPARE(chdir(gone.constData()), 0);
        QCOMPARE(rmdir(gone.constData()), 0);
        ProgramPlace called = place();
        called.argument0 = "bin/gui";
        QCOMPARE(connectorCandidates(called).at(1), QByteArray());
        QCOMPARE(connectorPath(called), fallback());
        called.argument0 = at("called/gui");
        QCOMPARE(connectorCandidates(called).at(1), beside("called"));
    }

    void followsTheCurrentDirectory()
    {
        ProgramPlace called = place();
        called.argument0 = "gui";
        writeFile(beside("called"), Mode::Executable);
        QCOMPARE(connectorPath(called), fallback());
        QCOMPARE(chdir(at("called").constData()), 0);
        QCOMPARE(connectorPath(called), beside("called"));
    }

    void relativeHomeBecomesAbsolute()
    {
        ProgramPlace relative = place();
        relative.home = "home";
        QCOMPARE(connectorPath(relative), fallback());
    }

    void currentPlaceIsThisProgram()
    {
        const ProgramPlace found = currentProgramPlace();
        QCOMPARE(found.packaging, Packaging::Directory);
        QCOMPARE(found.directory, QFile::encodeName(QCoreApplication::applicationDirPath()));
        QCOMPARE(found.argument0, QFile::encodeName(QCoreApplication::arguments().constFirst()));
    }

    void homeComesFromTheEnvironment()
    {
        qputenv("HOME", at("home of ü"));
        QCOMPARE(currentProgramPlace().home, at("home of ü"));
    }

    void homeComesFromTheUserEntry_data()
    {
        QTest::addColumn<bool>("isSet");
        QTest::newRow("HOME is unset") << false;
        QTest::newRow("HOME is empty") << true;
    }

    void homeComesFromTheUserEntry()
    {
        QFETCH(bool, isSet);
        if (isSet) {
            qputenv("HOME", "");
        } else {
            qunsetenv("HOME");
        }
        const passwd *const user = getpwuid(getuid());
        QVERIFY(user != nullptr);
        QCOMPARE(currentProgramPlace().home, QByteArray(user->pw_dir));
    }
};

static const TestClass<TestConnectorPath> testConnectorPath("tst_connectorpath");

#include "tst_connectorpath.moc"
